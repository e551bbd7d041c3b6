#pragma once

#include "apps/PendingLaunches.h"
#include "platform/Workspace.h"
#include "settings/Settings.h"

#include <QCoroTask>
#include <QUrl>
#include <functional>
#include <optional>

namespace moorline {

class AppBundles;
class FileManager;
struct BundleInfo;

/// The file manager's, on every system.
inline constexpr QLatin1StringView finderIdentifier("com.apple.finder");

/// The one place that starts applications, brings them to the front, hands them files and makes them quit. What fails
/// is logged and nothing else.
class AppLauncher final {
public:
    /// What the launcher is built on. Everything lent here outlives it.
    struct Context {
        AppBundles &bundles;
        Workspace &workspace;
        FileManager &fileManager;
        const Clock &clock;
        /// What counts as running for the user, even while the system cannot tell or an application has no window for
        /// a moment.
        std::function<QList<RunningApplication>()> steadilyRunning;
    };

    explicit AppLauncher(Context context);

    /// A shortcut for the application at a file URL. Absent when its extension is not exactly that of an application; a
    /// bundle that cannot be read still gives one, named after its file.
    [[nodiscard]] std::optional<AppShortcut> makeShortcut(const QUrl &url) const;
    /// Every application there is to choose from, each once, by name.
    [[nodiscard]] QCoro::Task<QList<AppShortcut>> installedApps() const;

    /// What a click on an icon does.
    void launch(const AppShortcut &shortcut);
    /// Brings the file manager to the front, with a window.
    void openFinder();
    /// Brings the application at a path to the front, or starts it.
    void openRegularApp(const QString &path);
    /// Opens the weather application or, where there is none, the forecast service's page for the place.
    void openWeatherApp(const WeatherLocation &place);
    /// What openWeatherApp() opens: the name of the application or of the web site.
    [[nodiscard]] QString weatherDestination() const;

    /// Opens files with an application; the file manager shows them.
    void open(const QList<QUrl> &urls, const AppShortcut &shortcut);
    /// Whether open() has any prospect, as far as the application is known.
    [[nodiscard]] bool takesFiles(const AppShortcut &shortcut) const;

    /// Says in the log that an application takes no files.
    static void refuseFiles(const AppShortcut &shortcut);

    /// Asks every running instance of an application to quit, but never the file manager.
    void quit(const AppShortcut &shortcut);
    /// Whether quit() would ask anyone.
    [[nodiscard]] bool canQuit(const AppShortcut &shortcut) const;

private:
    [[nodiscard]] QString located(const AppShortcut &shortcut) const;
    [[nodiscard]] std::optional<QString> identifierOf(const QString &path) const;
    [[nodiscard]] std::optional<QString> weatherApplication() const;
    [[nodiscard]] QList<RunningApplication> running(const QStringList &identifiers) const;
    [[nodiscard]] QList<RunningApplication> presentable(const std::optional<QString> &identifier) const;
    [[nodiscard]] bool isOnlyOutOfSight(const std::optional<QString> &identifier) const;
    [[nodiscard]] QList<RunningApplication> quittable(const AppShortcut &shortcut) const;
    void bringForward(const QString &path, const QString &failure);
    [[nodiscard]] Workspace::Opened reporting(const QString &path, const QString &failure);

    Context m_context;
    PendingLaunches m_pending;
};

} // namespace moorline
