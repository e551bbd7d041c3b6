#include "platform/linux/desktop/DesktopEntryFile.h"

#include "support/RegularFile.h"

namespace moorline {

namespace {

constexpr qint64 largestEntry = qint64(1024) * 1024;

GLibPointer<GKeyFile> parsed(const QByteArray &content)
{
    GLibPointer<GKeyFile> keyFile(g_key_file_new());
    if (!g_key_file_load_from_data(
            keyFile.get(), content.constData(), static_cast<gsize>(content.size()), G_KEY_FILE_NONE, nullptr))
        return nullptr;
    return keyFile;
}

} // namespace

DesktopEntryFile::DesktopEntryFile(GLibPointer<GKeyFile> keyFile)
    : m_keyFile(std::move(keyFile))
{
}

std::optional<DesktopEntryFile> DesktopEntryFile::open(const QString &path)
{
    const auto content = regularFileContent(path, largestEntry);
    if (!content || content->contains('\0'))
        return std::nullopt;
    auto keyFile = parsed(*content);
    if (!keyFile)
        return std::nullopt;
    DesktopEntryFile file(std::move(keyFile));
    if (file.text(G_KEY_FILE_DESKTOP_KEY_TYPE) != QLatin1StringView(G_KEY_FILE_DESKTOP_TYPE_APPLICATION))
        return std::nullopt;
    return file;
}

std::optional<QString> DesktopEntryFile::text(const char *key) const
{
    const GLibPointer<gchar> value(g_key_file_get_string(m_keyFile.get(), G_KEY_FILE_DESKTOP_GROUP, key, nullptr));
    return value ? std::optional(QString::fromUtf8(value.get())) : std::nullopt;
}

std::optional<QString> DesktopEntryFile::localisedText(const char *key) const
{
    const GLibPointer<gchar> value(
        g_key_file_get_locale_string(m_keyFile.get(), G_KEY_FILE_DESKTOP_GROUP, key, nullptr, nullptr));
    return value ? std::optional(QString::fromUtf8(value.get())) : std::nullopt;
}

QStringList DesktopEntryFile::texts(const char *key) const
{
    const GLibPointer<gchar *> values(
        g_key_file_get_string_list(m_keyFile.get(), G_KEY_FILE_DESKTOP_GROUP, key, nullptr, nullptr));
    QStringList texts;
    for (gchar **value = values.get(); value && *value; ++value)
        texts.append(QString::fromUtf8(*value));
    return texts;
}

bool DesktopEntryFile::flag(const char *key) const
{
    return g_key_file_get_boolean(m_keyFile.get(), G_KEY_FILE_DESKTOP_GROUP, key, nullptr) != FALSE;
}

std::optional<QString> DesktopEntryFile::actionName(const QString &action) const
{
    const QByteArray group = "Desktop Action " + action.toUtf8();
    const GLibPointer<gchar> value(g_key_file_get_locale_string(
        m_keyFile.get(), group.constData(), G_KEY_FILE_DESKTOP_KEY_NAME, nullptr, nullptr));
    return value ? std::optional(QString::fromUtf8(value.get())) : std::nullopt;
}

} // namespace moorline
