#include "apps/AppLauncher.h"

#include "apps/AppIdentity.h"
#include "platform/AppBundles.h"
#include "platform/FileManager.h"
#include "platform/Platform.h"
#include "support/DecimalText.h"

#include <QCollator>
#include <QDebug>
#include <QFileInfo>
#include <QPointer>
#include <QSet>
#include <QUrlQuery>
#include <algorithm>

namespace moorline {

namespace {

const QString weatherIdentifier = QStringLiteral("com.apple.weather");
/// Where the weather application stands even if the system does not know it by its identifier.
const QString weatherPath = QStringLiteral("/System/Applications/Weather.app");

bool isFinder(const AppShortcut &shortcut)
{
    return shortcut.bundleIdentifier == finderIdentifier;
}

std::optional<AppShortcut> shortcutFor(const QFileInfo &file, const QString &extension, const BundleInfo &bundle)
{
    // A hidden file that is called ".app" has no extension.
    if (file.suffix() != extension || file.completeBaseName().isEmpty())
        return std::nullopt;
    const QString name = bundle.displayName.value_or(bundle.name.value_or(file.completeBaseName()));
    return AppShortcut{file.filePath(), bundle.identifier, name};
}

QList<AppShortcut> distinct(const QList<InstalledBundle> &installed, const QString &extension)
{
    QList<AppShortcut> apps;
    QSet<QString> known;
    for (const InstalledBundle &bundle : installed) {
        const auto shortcut = shortcutFor(QFileInfo(bundle.path), extension, bundle.info);
        if (!shortcut || known.contains(shortcut->id()))
            continue;
        known.insert(shortcut->id());
        apps.append(*shortcut);
    }
    return apps;
}

void sortByName(QList<AppShortcut> &apps)
{
    QCollator order;
    order.setCaseSensitivity(Qt::CaseInsensitive);
    std::stable_sort(apps.begin(), apps.end(), [&order](const AppShortcut &left, const AppShortcut &right) {
        return order.compare(left.name, right.name) < 0;
    });
}

QCoro::Task<QList<AppShortcut>> listed(AppBundles *bundles)
{
    const QString extension = bundles->applicationExtension();
    const QList<InstalledBundle> installed = co_await bundles->installed();
    QList<AppShortcut> apps = distinct(installed, extension);
    sortByName(apps);
    co_return apps;
}

QUrl forecastPage(const WeatherLocation &place)
{
    QUrl page(QStringLiteral("https://open-meteo.com/en/docs"));
    page.setQuery(QUrlQuery({{QStringLiteral("latitude"), decimalText(place.latitude)},
        {QStringLiteral("longitude"), decimalText(place.longitude)}}));
    return page;
}

QString refusedDrop(const AppShortcut &shortcut)
{
    return QStringLiteral("Moorline: %1 refused the drop").arg(shortcut.name);
}

QString failureToOpen(const QString &path)
{
    return QStringLiteral("Moorline: failed to open ") + QFileInfo(path).fileName();
}

} // namespace

AppLauncher::AppLauncher(Context context)
    : m_context(std::move(context))
    , m_pending(context.workspace, context.clock)
{
}

std::optional<AppShortcut> AppLauncher::makeShortcut(const QUrl &url) const
{
    const QFileInfo file(url.adjusted(QUrl::StripTrailingSlash).toLocalFile());
    const AppBundles &bundles = m_context.bundles;
    return shortcutFor(file, bundles.applicationExtension(), bundles.info(file.filePath()).value_or(BundleInfo()));
}

QCoro::Task<QList<AppShortcut>> AppLauncher::installedApps() const
{
    return listed(&m_context.bundles);
}

void AppLauncher::launch(const AppShortcut &shortcut)
{
    if (isFinder(shortcut))
        openFinder();
    else
        openRegularApp(located(shortcut));
}

void AppLauncher::openFinder()
{
    const QString identifier = finderIdentifier;
    const QString path = m_context.workspace.applicationPath(identifier).value_or(identifier);
    if (presentable(identifier).isEmpty() && (isOnlyOutOfSight(identifier) || !m_pending.begin(path, identifier)))
        return;
    m_context.fileManager.comeForward(reporting(path, failureToOpen(path)));
}

void AppLauncher::openRegularApp(const QString &path)
{
    bringForward(path, failureToOpen(path));
}

void AppLauncher::openWeatherApp(const WeatherLocation &place)
{
    if (const auto application = weatherApplication())
        bringForward(*application, {});
    else
        m_context.workspace.openAddress(forecastPage(place));
}

QString AppLauncher::weatherDestination() const
{
    const auto application = weatherApplication();
    const auto shortcut = application ? makeShortcut(QUrl::fromLocalFile(*application)) : std::nullopt;
    return shortcut ? shortcut->name : QStringLiteral("open-meteo.com");
}

void AppLauncher::open(const QList<QUrl> &urls, const AppShortcut &shortcut)
{
    if (urls.isEmpty())
        return;
    if (isFinder(shortcut)) {
        m_context.workspace.reveal(urls);
        return;
    }
    if (!takesFiles(shortcut)) {
        refuseFiles(shortcut);
        return;
    }
    const QString path = located(shortcut);
    // A click that comes before the first window starts nothing more; other files do.
    if (const auto identifier = identifierOf(path); presentable(identifier).isEmpty())
        static_cast<void>(m_pending.begin(path, identifier));
    m_context.workspace.open(path, urls, reporting(path, refusedDrop(shortcut)));
}

void AppLauncher::refuseFiles(const AppShortcut &shortcut)
{
    qInfo().noquote() << refusedDrop(shortcut) + QStringLiteral(": it takes no files");
}

bool AppLauncher::takesFiles(const AppShortcut &shortcut) const
{
    return isFinder(shortcut) || m_context.bundles.info(located(shortcut)).value_or(BundleInfo()).takesFiles;
}

void AppLauncher::quit(const AppShortcut &shortcut)
{
    for (const RunningApplication &application : quittable(shortcut))
        m_context.workspace.terminate(application);
}

bool AppLauncher::canQuit(const AppShortcut &shortcut) const
{
    return !quittable(shortcut).isEmpty();
}

QString AppLauncher::located(const AppShortcut &shortcut) const
{
    return identityOf(shortcut, m_context.bundles).path;
}

std::optional<QString> AppLauncher::identifierOf(const QString &path) const
{
    const auto bundle = m_context.bundles.info(path);
    return bundle ? bundle->identifier : std::nullopt;
}

std::optional<QString> AppLauncher::weatherApplication() const
{
    if (auto known = m_context.workspace.applicationPath(weatherIdentifier))
        return known;
    return m_context.bundles.info(weatherPath) ? std::optional(weatherPath) : std::nullopt;
}

QList<RunningApplication> AppLauncher::running(const QStringList &identifiers) const
{
    QList<RunningApplication> applications;
    if (!identifiers.isEmpty())
        applications = m_context.workspace.runningApplications().value_or(QList<RunningApplication>());
    applications.removeIf([&identifiers](const RunningApplication &application) {
        const auto &identifier = application.bundleIdentifier;
        return !identifier || !identifiers.contains(*identifier) || application.isTerminated;
    });
    return applications;
}

/// Those that can come to the front. Where applications are known by their windows, one that has none to switch to has
/// to be started again for that.
QList<RunningApplication> AppLauncher::presentable(const std::optional<QString> &identifier) const
{
    QList<RunningApplication> instances = running(identifier ? QStringList(*identifier) : QStringList());
    if (m_context.workspace.endsWithLastWindow()) {
        instances.removeIf([](const RunningApplication &application) {
            return application.activationPolicy != ActivationPolicy::regular;
        });
    }
    return instances;
}

/// Whether an application that cannot come to the front counts as running all the same: it, or the window manager, will
/// be back in a moment, and until then a second copy would be one too many.
bool AppLauncher::isOnlyOutOfSight(const std::optional<QString> &identifier) const
{
    if (!identifier || !m_context.workspace.endsWithLastWindow())
        return false;
    const QList<RunningApplication> applications = m_context.steadilyRunning();
    return std::any_of(applications.begin(), applications.end(), [&identifier](const RunningApplication &application) {
        return application.bundleIdentifier == identifier && application.activationPolicy == ActivationPolicy::regular;
    });
}

QList<RunningApplication> AppLauncher::quittable(const AppShortcut &shortcut) const
{
    const QStringList identifiers = identityOf(shortcut, m_context.bundles).identifiers;
    if (!shortcut.bundleIdentifier || identifiers.contains(finderIdentifier))
        return {};
    QList<RunningApplication> applications = running(identifiers);
    applications.removeIf([this](const RunningApplication &one) { return !m_context.workspace.canTerminate(one); });
    return applications;
}

void AppLauncher::bringForward(const QString &path, const QString &failure)
{
    const auto identifier = identifierOf(path);
    if (const auto instances = presentable(identifier); !instances.isEmpty()) {
        m_context.workspace.activate(instances.first());
        return;
    }
    if (!isOnlyOutOfSight(identifier) && m_pending.begin(path, identifier))
        m_context.workspace.open(path, {}, reporting(path, failure));
}

/// `failure` is what the log calls it; nothing is logged without one.
Workspace::Opened AppLauncher::reporting(const QString &path, const QString &failure)
{
    return [path, failure, pending = QPointer(&m_pending)](const std::optional<QString> &error) {
        if (!error)
            return;
        if (!failure.isEmpty())
            qInfo().noquote() << failure + QStringLiteral(": ") + *error;
        // This may be any thread.
        soon([path, pending] {
            if (pending)
                pending->end(path);
        });
    };
}

} // namespace moorline
