#include "platform/linux/icons/IconThemeIndex.h"

#include "platform/linux/glib/GObjectPointer.h"
#include "support/RegularFile.h"

#include <QDir>
#include <algorithm>

namespace moorline {

namespace {

constexpr qint64 largestIndex = qint64(1024) * 1024;
/// The largest themes have some 700.
constexpr qsizetype mostFolders = 4096;
constexpr int largestSize = 4096;
constexpr int largestScale = 16;

constexpr auto themeGroup = "Icon Theme";

QStringList texts(GKeyFile &index, const char *key)
{
    const GLibPointer<gchar> value(g_key_file_get_string(&index, themeGroup, key, nullptr));
    return value ? QString::fromUtf8(value.get()).split(u',', Qt::SkipEmptyParts) : QStringList();
}

int number(GKeyFile &index, const QByteArray &group, const char *key, int otherwise, int largest)
{
    GError *error = nullptr;
    const int value = g_key_file_get_integer(&index, group.constData(), key, &error);
    if (error) {
        g_error_free(error);
        return otherwise;
    }
    return std::clamp(value, 0, largest);
}

IconFolder::Type type(GKeyFile &index, const QByteArray &group)
{
    const GLibPointer<gchar> value(g_key_file_get_string(&index, group.constData(), "Type", nullptr));
    const QByteArray name(value.get());
    if (name == "Fixed")
        return IconFolder::Type::fixed;
    return name == "Scalable" ? IconFolder::Type::scalable : IconFolder::Type::threshold;
}

/// Absent for a path that leads out of the theme.
std::optional<IconFolder> folder(GKeyFile &index, const QString &path)
{
    const QString clean = QDir::cleanPath(path.trimmed());
    const QByteArray group = path.trimmed().toUtf8();
    if (clean.isEmpty() || QDir::isAbsolutePath(clean) || clean.startsWith(QLatin1StringView("..")))
        return std::nullopt;
    IconFolder result;
    result.path = clean;
    result.size = number(index, group, "Size", 0, largestSize);
    if (result.size == 0)
        return std::nullopt;
    result.scale = std::max(number(index, group, "Scale", 1, largestScale), 1);
    result.type = type(index, group);
    result.smallest = number(index, group, "MinSize", result.size, largestSize);
    result.largest = number(index, group, "MaxSize", result.size, largestSize);
    result.threshold = number(index, group, "Threshold", 2, largestSize);
    return result;
}

} // namespace

std::optional<IconThemeIndex> readIconThemeIndex(const QString &path)
{
    const auto content = regularFileContent(path, largestIndex);
    if (!content)
        return std::nullopt;
    const GLibPointer<GKeyFile> index(g_key_file_new());
    if (!g_key_file_load_from_data(
            index.get(), content->constData(), static_cast<gsize>(content->size()), G_KEY_FILE_NONE, nullptr)
        || !g_key_file_has_group(index.get(), themeGroup))
        return std::nullopt;
    IconThemeIndex result;
    result.inherits = texts(*index, "Inherits");
    const QStringList paths = (texts(*index, "Directories") + texts(*index, "ScaledDirectories")).mid(0, mostFolders);
    for (const QString &folderPath : paths) {
        if (const auto found = folder(*index, folderPath))
            result.folders.append(*found);
    }
    return result;
}

} // namespace moorline
