#include "apps/DockImporter.h"

#include "apps/AppLauncher.h"
#include "platform/AppBundles.h"
#include "platform/Files.h"
#include "platform/Preferences.h"
#include "settings/SettingsStore.h"

#include <QFileInfo>
#include <QPointer>
#include <algorithm>

namespace moorline {

namespace {

const AppShortcut &finderShortcut()
{
    static const AppShortcut shortcut{
        QStringLiteral("/System/Library/CoreServices/Finder.app"), finderIdentifier, QStringLiteral("Finder")};
    return shortcut;
}

bool isSame(const QString &left, const QString &right)
{
    return left.compare(right, Qt::CaseInsensitive) == 0;
}

std::optional<QVariantMap> dictionary(const QVariant &value)
{
    return value.typeId() == QMetaType::QVariantMap ? std::optional(value.toMap()) : std::nullopt;
}

std::optional<QString> text(const QVariantMap &values, const QString &key)
{
    const QVariant value = values.value(key);
    return value.typeId() == QMetaType::QString ? std::optional(value.toString()) : std::nullopt;
}

/// Empty unless every one of them is a dictionary.
QList<QVariantMap> dictionaries(const QVariant &value)
{
    const QVariantList entries = value.typeId() == QMetaType::QVariantList ? value.toList() : QVariantList();
    QList<QVariantMap> all;
    for (const QVariant &entry : entries) {
        const auto one = dictionary(entry);
        if (!one)
            return {};
        all.append(*one);
    }
    return all;
}

QString label(const QVariantMap &tileData)
{
    const auto fileLabel = text(tileData, QStringLiteral("file-label"));
    return fileLabel ? *fileLabel : text(tileData, QStringLiteral("label")).value_or(QStringLiteral("Unknown"));
}

std::optional<AppShortcut> shortcutNamed(const QString &name, const QList<AppShortcut> &apps)
{
    const auto found =
        std::find_if(apps.begin(), apps.end(), [&name](const AppShortcut &app) { return isSame(app.name, name); });
    return found == apps.end() ? std::nullopt : std::optional(*found);
}

} // namespace

DockImporter::DockImporter(Context context)
    : m_context(context)
{
}

QCoro::Task<DockImporter::Result> DockImporter::readPinnedApps()
{
    QPointer<DockImporter> alive{this};
    Result result;
    std::optional<QList<AppShortcut>> installed;
    const QList<Tile> pinned = tiles(m_context.preferences);
    QStringList paths;
    for (const Tile &tile : pinned) {
        if (tile.url)
            paths.append(tile.url->path());
    }
    co_await m_context.bundles.lookAt(paths);
    if (!alive)
        co_return Result();
    for (const Tile &tile : pinned) {
        std::optional<AppShortcut> shortcut = shortcutAt(tile);
        if (!shortcut && isGone(tile)) {
            if (!installed) {
                installed = co_await m_context.launcher.installedApps();
            }
            if (!alive)
                co_return Result();
            shortcut = shortcutNamed(QFileInfo(tile.url->path()).completeBaseName(), *installed);
        }
        if (shortcut)
            result.shortcuts.append(*shortcut);
        else
            result.unresolved.append(tile.label);
    }
    co_return result;
}

QCoro::Task<DockImporter::Result> DockImporter::importIntoSettings()
{
    QPointer<DockImporter> alive{this};
    Result result = co_await readPinnedApps();
    if (!alive)
        co_return result;
    SettingsStore &store = m_context.store;
    for (const AppShortcut &shortcut : std::as_const(result.shortcuts)) {
        const qsizetype before = store.settings().appShortcuts.size();
        store.addShortcut(shortcut);
        if (store.settings().appShortcuts.size() > before)
            result.added.append(shortcut);
    }
    co_return result;
}

QString DockImporter::sentence(qsizetype addedCount)
{
    if (addedCount == 0)
        return tr("Nothing new — everything pinned in the macOS Dock is already here.");
    if (addedCount == 1)
        return tr("Added 1 app from the macOS Dock.");
    return tr("Added %1 apps from the macOS Dock.").arg(addedCount);
}

QList<DockImporter::Tile> DockImporter::tiles(const Preferences &preferences)
{
    const auto domain = preferences.open(QStringLiteral("com.apple.dock"));
    QList<Tile> found;
    if (!domain)
        return found;
    for (const QVariantMap &entry : dictionaries(domain->value(QStringLiteral("persistent-apps")))) {
        if (const auto tileData = dictionary(entry.value(QStringLiteral("tile-data"))))
            found.append({.label = label(*tileData), .url = bundleURL(*tileData)});
    }
    return found;
}

std::optional<QUrl> DockImporter::bundleURL(const QVariantMap &tileData)
{
    const auto fileData = dictionary(tileData.value(QStringLiteral("file-data")));
    const auto address = fileData ? text(*fileData, QStringLiteral("_CFURLString")) : std::nullopt;
    if (!address)
        return std::nullopt;
    const QUrl url(*address, QUrl::StrictMode);
    return url.isValid() ? std::optional(url.adjusted(QUrl::StripTrailingSlash)) : std::nullopt;
}

std::optional<AppShortcut> DockImporter::shortcutAt(const Tile &tile) const
{
    if (isSame(tile.label, QStringLiteral("Finder")))
        return finderShortcut();
    if (!tile.url)
        return std::nullopt;
    if (!isGone(tile))
        return m_context.launcher.makeShortcut(QUrl::fromLocalFile(tile.url->path()));
    // Some systems know where it went.
    const auto moved = m_context.bundles.locate(tile.url->path(), std::nullopt);
    return moved ? m_context.launcher.makeShortcut(QUrl::fromLocalFile(*moved)) : std::nullopt;
}

bool DockImporter::isGone(const Tile &tile) const
{
    return tile.url && !m_context.files.exists(tile.url->path());
}

} // namespace moorline
