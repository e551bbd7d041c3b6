#include "platform/linux/desktop/DesktopEntries.h"

#include "platform/linux/glib/GObjectPointer.h"
#include "support/FileDescriptor.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <fcntl.h>
#include <sys/stat.h>

namespace moorline {

namespace {

constexpr qint64 largestEntry = qint64(1024) * 1024;

bool isRegularFile(int descriptor)
{
    struct stat status = {};
    return ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
}

/// The content of a regular file, or nothing. A FIFO or a device at that path is neither waited for nor read.
std::optional<QByteArray> entryContent(const QString &path)
{
    if (path.contains(QChar(u'\0')))
        return std::nullopt;
    const FileDescriptor descriptor(
        ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
    QFile file;
    if (!isRegularFile(descriptor.get()) || !file.open(descriptor.get(), QIODevice::ReadOnly))
        return std::nullopt;
    const QByteArray content = file.read(largestEntry + 1);
    if (content.size() > largestEntry || content.contains('\0'))
        return std::nullopt;
    return content;
}

GLibPointer<GKeyFile> parsed(const QByteArray &content)
{
    GLibPointer<GKeyFile> keyFile(g_key_file_new());
    if (!g_key_file_load_from_data(
            keyFile.get(), content.constData(), static_cast<gsize>(content.size()), G_KEY_FILE_NONE, nullptr))
        return nullptr;
    return keyFile;
}

std::optional<QString> text(GKeyFile &entry, const char *key)
{
    const GLibPointer<gchar> value(g_key_file_get_string(&entry, G_KEY_FILE_DESKTOP_GROUP, key, nullptr));
    return value ? std::optional(QString::fromUtf8(value.get())) : std::nullopt;
}

std::optional<QString> localisedText(GKeyFile &entry, const char *key)
{
    const GLibPointer<gchar> value(
        g_key_file_get_locale_string(&entry, G_KEY_FILE_DESKTOP_GROUP, key, nullptr, nullptr));
    return value ? std::optional(QString::fromUtf8(value.get())) : std::nullopt;
}

/// The path inside the first applications folder that holds the entry, otherwise its name.
QString pathInApplications(const QString &path)
{
    const QString absolute = QDir::cleanPath(QFileInfo(path).absoluteFilePath());
    const auto folders = QStandardPaths::standardLocations(QStandardPaths::ApplicationsLocation);
    for (const QString &folder : folders) {
        const QString prefix = QDir::cleanPath(folder) + u'/';
        if (absolute.startsWith(prefix))
            return absolute.mid(prefix.size());
    }
    return QFileInfo(absolute).fileName();
}

QString identifier(const QString &path)
{
    QString id = pathInApplications(path);
    id.replace(u'/', u'-');
    const QString suffix = QStringLiteral(".desktop");
    if (id.endsWith(suffix))
        id.chop(suffix.size());
    return id;
}

} // namespace

QString DesktopEntries::applicationExtension() const
{
    return QStringLiteral("desktop");
}

std::optional<BundleInfo> DesktopEntries::info(const QString &path) const
{
    const auto content = entryContent(path);
    const auto entry = content ? parsed(*content) : nullptr;
    if (!entry || text(*entry, G_KEY_FILE_DESKTOP_KEY_TYPE) != QLatin1StringView(G_KEY_FILE_DESKTOP_TYPE_APPLICATION))
        return std::nullopt;
    BundleInfo info;
    info.identifier = identifier(path);
    info.displayName = localisedText(*entry, G_KEY_FILE_DESKTOP_KEY_NAME);
    if (!info.displayName)
        info.name = localisedText(*entry, G_KEY_FILE_DESKTOP_KEY_GENERIC_NAME);
    return info;
}

} // namespace moorline
