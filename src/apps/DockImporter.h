#pragma once

#include "settings/Settings.h"

#include <QCoreApplication>
#include <QCoroTask>
#include <QObject>
#include <QStringList>
#include <QUrl>

namespace moorline {

class AppBundles;
class AppLauncher;
class Files;
class Preferences;
class SettingsStore;

/// Copies the applications that are pinned in the desktop's dock into the settings.
class DockImporter final : public QObject {
    Q_OBJECT
public:
    /// What the importer is built on. Everything lent here outlives it.
    struct Context {
        const Preferences &preferences;
        AppBundles &bundles;
        const AppLauncher &launcher;
        const Files &files;
        SettingsStore &store;
    };

    /// In the order of the dock.
    struct Result {
        QList<AppShortcut> shortcuts;
        /// The labels of what could not be found.
        QStringList unresolved;
        /// Those of the shortcuts that were not in the settings before.
        QList<AppShortcut> added;

        bool operator==(const Result &) const = default;
    };

    explicit DockImporter(Context context);

    /// Changes nothing; adds nothing.
    [[nodiscard]] QCoro::Task<Result> readPinnedApps();
    /// Adds what is pinned to the settings, at the end, unless it is there.
    [[nodiscard]] QCoro::Task<Result> importIntoSettings();

    /// What an import came to, for the user.
    [[nodiscard]] static QString sentence(qsizetype addedCount);

private:
    struct Tile {
        QString label;
        std::optional<QUrl> url;
    };

    [[nodiscard]] static QList<Tile> tiles(const Preferences &preferences);
    [[nodiscard]] static std::optional<QUrl> bundleURL(const QVariantMap &tileData);
    [[nodiscard]] std::optional<AppShortcut> shortcutAt(const Tile &tile) const;
    [[nodiscard]] bool isGone(const Tile &tile) const;

    Context m_context;
};

} // namespace moorline
