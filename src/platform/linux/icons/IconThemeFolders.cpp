#include "platform/linux/icons/IconThemeFolders.h"

#include "platform/linux/icons/IconThemeIndex.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <sys/stat.h>
#include <unistd.h>

namespace moorline {

namespace {

constexpr qsizetype longestChain = 32;
constexpr qsizetype mostWatched = 512;
const QString lastTheme = QStringLiteral("hicolor");
const QLatin1StringView extensions[] = {
    QLatin1StringView(".png"), QLatin1StringView(".svg"), QLatin1StringView(".xpm")};

bool isReadable(const QString &path)
{
    return ::access(QFile::encodeName(path).constData(), R_OK) == 0;
}

std::optional<QString> iconFile(const QString &folder, const QString &name)
{
    for (const QLatin1StringView extension : extensions) {
        const QString path = folder + u'/' + name + extension;
        if (isReadable(path))
            return path;
    }
    return std::nullopt;
}

/// A theme's name is also the name of its folder.
bool isFolderName(const QString &name)
{
    return !name.isEmpty() && name != QLatin1StringView(".") && name != QLatin1StringView("..") && !name.contains(u'/');
}

} // namespace

QStringList IconThemeFolders::standardBases()
{
    QStringList bases{QDir::homePath() + QStringLiteral("/.icons")};
    const auto dataFolders = QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation);
    for (const QString &folder : dataFolders)
        bases.append(folder + QStringLiteral("/icons"));
    bases.append(QStringLiteral("/usr/share/pixmaps"));
    return bases;
}

IconThemeFolders::IconThemeFolders(QStringList bases)
    : m_bases(std::move(bases))
{
}

void IconThemeFolders::setTheme(const QString &wanted)
{
    m_wanted = wanted;
    m_isRead = false;
}

std::optional<QString> IconThemeFolders::find(const QString &name, int size, int scale)
{
    read();
    for (const Theme &theme : std::as_const(m_themes)) {
        if (auto path = findIn(theme, name, size, scale))
            return path;
    }
    for (const QString &base : std::as_const(m_bases)) {
        if (auto path = iconFile(base, name))
            return path;
    }
    return std::nullopt;
}

std::optional<QString> IconThemeFolders::findIn(const Theme &theme, const QString &name, int size, int scale) const
{
    const auto order = lookupOrder(theme.folders, size, scale);
    for (const qsizetype index : order) {
        for (const QString &place : theme.places.at(index)) {
            if (auto path = iconFile(place, name))
                return path;
        }
    }
    return std::nullopt;
}

bool IconThemeFolders::refresh()
{
    if (!m_isRead)
        return false;
    const bool isChanged = std::any_of(
        m_stamps.cbegin(), m_stamps.cend(), [](const auto &visited) { return stamp(visited.first) != visited.second; });
    if (isChanged)
        m_isRead = false;
    return isChanged;
}

QStringList IconThemeFolders::watchable()
{
    read();
    QStringList folders;
    for (const auto &[path, seen] : std::as_const(m_stamps)) {
        if (seen && folders.size() < mostWatched)
            folders.append(path);
    }
    return folders;
}

QStringList IconThemeFolders::installedThemes() const
{
    QStringList themes;
    for (const QString &base : m_bases) {
        const auto names = QDir(base).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
        for (const QString &name : names) {
            if (QFile::exists(base + u'/' + name + QStringLiteral("/index.theme")))
                themes.append(name);
        }
    }
    return themes;
}

void IconThemeFolders::read()
{
    if (std::exchange(m_isRead, true))
        return;
    m_themes.clear();
    m_stamps.clear();
    for (const QString &base : std::as_const(m_bases))
        visit(base);
    QStringList seen{lastTheme};
    const QString first = usableTheme(m_wanted, installedThemes());
    if (first != lastTheme)
        readTheme(first, seen);
    seen.removeFirst();
    readTheme(lastTheme, seen);
}

void IconThemeFolders::readTheme(const QString &name, QStringList &seen)
{
    if (!isFolderName(name) || seen.contains(name) || seen.size() >= longestChain)
        return;
    seen.append(name);
    std::optional<IconThemeIndex> index;
    QStringList roots;
    for (const QString &base : std::as_const(m_bases)) {
        const QString root = base + u'/' + name;
        if (!visit(root))
            continue;
        roots.append(root);
        if (!index)
            index = readIconThemeIndex(root + QStringLiteral("/index.theme"));
    }
    if (!index)
        return;
    m_themes.append(themeIn(roots, index->folders));
    for (const QString &parent : std::as_const(index->inherits))
        readTheme(parent.trimmed(), seen);
}

/// Most of the folders that an index names are nowhere.
IconThemeFolders::Theme IconThemeFolders::themeIn(const QStringList &roots, const QList<IconFolder> &folders)
{
    Theme theme;
    for (const IconFolder &folder : folders) {
        QStringList places;
        for (const QString &root : roots) {
            if (visitBelow(root, root + u'/' + folder.path))
                places.append(root + u'/' + folder.path);
        }
        if (places.isEmpty())
            continue;
        theme.folders.append(folder);
        theme.places.append(places);
    }
    return theme;
}

bool IconThemeFolders::visit(const QString &folder)
{
    const Stamp now = stamp(folder);
    m_stamps.append({folder, now});
    return now.has_value();
}

bool IconThemeFolders::visitBelow(const QString &root, const QString &folder)
{
    const bool exists = stamp(folder).has_value();
    QString changing = folder;
    while (changing.size() > root.size() && !stamp(changing))
        changing.truncate(changing.lastIndexOf(u'/'));
    const bool isVisited =
        std::any_of(m_stamps.cbegin(), m_stamps.cend(), [&](const auto &visited) { return visited.first == changing; });
    if (!isVisited)
        visit(changing);
    return exists;
}

IconThemeFolders::Stamp IconThemeFolders::stamp(const QString &path)
{
    struct stat status = {};
    if (::stat(QFile::encodeName(path).constData(), &status) != 0 || !S_ISDIR(status.st_mode))
        return std::nullopt;
    return qint64(status.st_mtim.tv_sec) * 1'000'000'000 + status.st_mtim.tv_nsec;
}

} // namespace moorline
