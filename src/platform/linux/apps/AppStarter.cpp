#include "platform/linux/apps/AppStarter.h"

#include "freedesktop/LaunchRules.h"
#include "freedesktop/QuitPlan.h"
#include "platform/linux/apps/ApplicationCalls.h"
#include "platform/linux/apps/DesktopEntries.h"
#include "platform/linux/apps/EntryLaunch.h"
#include "platform/linux/apps/EntryReader.h"
#include "platform/linux/bus/Bus.h"
#include "platform/linux/bus/PendingBusCall.h"
#include "platform/linux/x11/StartupMessages.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QLoggingCategory>
#include <QPointer>

namespace moorline {

namespace {

Q_LOGGING_CATEGORY(logStart, "moorline.apps.start", QtInfoMsg)

/// As long as a bus waits for a service to come up.
constexpr std::chrono::seconds longestActivation{25};
constexpr std::chrono::seconds longestRequest{10};

QList<QByteArray> encoded(const QList<QUrl> &addresses)
{
    QList<QByteArray> uris;
    for (const QUrl &address : addresses)
        uris.append(address.toEncoded(QUrl::FullyEncoded));
    return uris;
}

QList<QUrl> foldersOf(const QList<QUrl> &files)
{
    QList<QUrl> folders;
    for (const QUrl &file : files) {
        const QUrl folder = file.adjusted(QUrl::RemoveFilename).adjusted(QUrl::StripTrailingSlash);
        if (!folders.contains(folder))
            folders.append(folder);
    }
    return folders;
}

void tell(const AppStarter::Opened &opened, const std::optional<QString> &error)
{
    if (opened)
        opened(error);
}

} // namespace

AppStarter::AppStarter(DesktopEntries &entries, Bus &sessionBus, Clock &clock, QList<QByteArray> environment,
    const StartupMessages *messages, UserTime userTime)
    : m_entries(entries)
    , m_bus(sessionBus)
    , m_clock(clock)
    , m_environment(std::move(environment))
    , m_messages(messages)
    , m_userTime(std::move(userTime))
    , m_children(clock)
    , m_scopes(sessionBus, clock)
{
    connect(&m_children, &ChildProcesses::ended, this, &AppStarter::noteEnd);
}

AppStarter::~AppStarter() = default;

void AppStarter::open(const QString &path, const QList<QUrl> &files, Opened opened)
{
    // A part that is no program, such as the file manager, is known only when the entries are.
    m_entries.whenLoaded([alive = QPointer<AppStarter>(this), path, uris = encoded(files), opened = std::move(opened)] {
        if (!alive)
            return;
        const QString place = alive->m_entries.locate(path, std::nullopt).value_or(path);
        const QString id = entryId(place, alive->m_entries.places().folders);
        const Launch launch{
            .path = place, .id = id, .startupId = alive->newStartupId(id), .uris = uris, .opened = opened};
        alive->m_background.run<std::optional<EntryRecord>>([place, id] { return readEntry(place, id); },
            [starter = alive.data(), launch](
                const std::optional<EntryRecord> &record) { starter->begin(launch, record); });
    });
}

void AppStarter::startAction(const QString &path, const QString &action, const Heard &heard)
{
    const EntryRecord *record = m_entries.catalogue()->byPath(path);
    if (!record)
        return heard(false);
    // Nothing comes to the front by it, so nobody waits for a window.
    const Launch launch{.path = {}, .id = record->id, .startupId = newStartupId(record->id)};
    if (isStartedByBus(*record) && m_bus.isOpen())
        askForAction(launch, *record, action, heard);
    else
        runAction(launch, *record, action, heard);
}

QCoro::Task<> AppStarter::askForAction(Launch launch, EntryRecord record, QString action, Heard heard)
{
    const QPointer<AppStarter> alive(this);
    const BusAnswer answer =
        co_await ask(*this, m_bus, m_clock, actionCall(record, action, launch.startupId), longestRequest);
    if (!alive)
        co_return;
    if (answer.isError() && isNobodyThere(answer.errorName()))
        runAction(launch, record, action, heard);
    else
        heard(!answer.isError() || !isQuitUnheard(answer.errorName()));
}

void AppStarter::runAction(const Launch &launch, const EntryRecord &record, const QString &action, const Heard &heard)
{
    runApart(
        launch, record,
        [path = record.path, action](const LaunchManner &how) { return launchAction(path, action, how); }, heard);
}

void AppStarter::openAddress(const QUrl &address)
{
    m_entries.whenLoaded([alive = QPointer<AppStarter>(this), address] {
        if (!alive)
            return;
        const auto *browser =
            alive->m_entries.catalogue()->handler(QStringLiteral("x-scheme-handler/") + address.scheme());
        if (browser)
            alive->open(browser->path, {address}, {});
        else
            alive->startProgram(QStringLiteral("xdg-open"), {QString::fromLatin1(address.toEncoded())});
    });
}

void AppStarter::reveal(const QList<QUrl> &files)
{
    if (!files.isEmpty())
        askFileManager(QStringLiteral("ShowItems"), files, foldersOf(files), nullptr);
}

void AppStarter::showFolder(const QUrl &folder, Opened opened)
{
    m_entries.whenLoaded([alive = QPointer<AppStarter>(this), folder, opened = std::move(opened)] {
        if (!alive)
            return;
        if (alive->m_entries.catalogue()->fileManager())
            alive->openFolders({folder}, opened);
        else
            alive->askFileManager(QStringLiteral("ShowFolders"), {folder}, {folder}, opened);
    });
}

void AppStarter::startProgram(const QString &program, const QStringList &arguments)
{
    const EntryRecord record{.path = {}, .id = program.section(u'/', -1)};
    const Launch launch{.path = {}, .id = record.id, .startupId = newStartupId(record.id)};
    runApart(
        launch, record,
        [program, arguments](const LaunchManner &how) { return launchProgram(program, arguments, how); }, nullptr);
}

QByteArray AppStarter::newStartupId(const QString &entryId)
{
    return startupId(entryId, QCoreApplication::applicationPid(), ++m_launches, m_userTime());
}

LaunchManner AppStarter::manner(const Launch &launch, const EntryRecord &record)
{
    QList<QByteArray> own{"DESKTOP_STARTUP_ID=" + launch.startupId, "XDG_ACTIVATION_TOKEN=" + launch.startupId};
    // The window of what runs in a terminal is the terminal's.
    if (!record.terminal && !record.path.isEmpty())
        own.append("GIO_LAUNCHED_DESKTOP_FILE=" + QFile::encodeName(record.path));
    return {.environment = launchEnvironment(m_environment, own),
        .home = QFile::encodeName(QDir::homePath()),
        .hold = m_scopes.hold(record.id, record.name.value_or(record.id))};
}

void AppStarter::begin(const Launch &launch, const std::optional<EntryRecord> &record)
{
    if (!record || record->hidden)
        tell(launch.opened, QStringLiteral("there is no such application"));
    else if (!launch.uris.isEmpty() && !takesFiles(record->exec))
        tell(launch.opened, QStringLiteral("it takes no files"));
    else if (isStartedByBus(*record) && m_bus.isOpen())
        activate(launch, *record);
    else
        run(launch, *record);
}

QCoro::Task<> AppStarter::activate(Launch launch, EntryRecord record)
{
    const QPointer<AppStarter> alive(this);
    announce(record, launch);
    const BusAnswer answer =
        co_await ask(*this, m_bus, m_clock, activationCall(record, launch.uris, launch.startupId), longestActivation);
    if (!alive)
        co_return;
    if (answer.isError() && isNobodyThere(answer.errorName()) && !record.exec.isEmpty()) {
        unannounce(launch.startupId);
        run(launch, record);
        co_return;
    }
    if (answer.isError())
        unannounce(launch.startupId);
    tell(launch.opened, answer.isError() ? std::optional(answer.errorText()) : std::nullopt);
}

void AppStarter::run(const Launch &launch, const EntryRecord &record)
{
    announce(record, launch);
    runApart(
        launch, record,
        [path = record.path, uris = launch.uris](const LaunchManner &how) { return launchEntry(path, uris, how); },
        nullptr);
}

void AppStarter::runApart(const Launch &launch, const EntryRecord &record,
    const std::function<LaunchOutcome(const LaunchManner &)> &work, const Heard &then)
{
    const LaunchManner how = manner(launch, record);
    m_background.run<LaunchOutcome>([work, how] { return work(how); },
        [this, launch, record, hold = how.hold, then](const LaunchOutcome &outcome) {
            m_scopes.release(hold);
            take(launch, record, outcome);
            if (then)
                then(!outcome.error);
        });
}

void AppStarter::take(const Launch &launch, const EntryRecord &record, const LaunchOutcome &outcome)
{
    if (outcome.error) {
        qCDebug(logStart) << "not started:" << record.id << *outcome.error;
        unannounce(launch.startupId);
    }
    for (const qint64 process : outcome.processes) {
        m_origins.insert(process, {launch.path, launch.startupId, record.startupNotify});
        m_children.watch(process);
        if (!launch.path.isEmpty())
            Q_EMIT started(launch.path, QString::fromLatin1(launch.startupId), process);
    }
    tell(launch.opened, outcome.error);
}

void AppStarter::announce(const EntryRecord &record, const Launch &launch) const
{
    if (m_messages && record.startupNotify)
        m_messages->send(startupBegun(record, launch.startupId, 0));
}

void AppStarter::unannounce(const QByteArray &startupId) const
{
    if (m_messages)
        m_messages->send(startupEnded(startupId));
}

void AppStarter::noteEnd(qint64 process)
{
    const Origin origin = m_origins.take(process);
    if (origin.isAnnounced)
        unannounce(origin.startupId);
    if (!origin.path.isEmpty())
        Q_EMIT ended(origin.path, process);
}

QCoro::Task<> AppStarter::askFileManager(QString method, QList<QUrl> subjects, QList<QUrl> fallback, Opened opened)
{
    const QPointer<AppStarter> alive(this);
    const auto call =
        folderCall(method, encoded(subjects), newStartupId(QStringLiteral("org.freedesktop.FileManager1")));
    const BusAnswer answer = co_await ask(*this, m_bus, m_clock, call, longestRequest);
    if (!alive)
        co_return;
    if (answer.isError() && isNobodyThere(answer.errorName()))
        openFolders(fallback, opened);
    else
        tell(opened, answer.isError() ? std::optional(answer.errorText()) : std::nullopt);
}

void AppStarter::openFolders(const QList<QUrl> &folders, const Opened &opened)
{
    m_entries.whenLoaded([alive = QPointer<AppStarter>(this), folders, opened] {
        if (!alive)
            return;
        const EntryRecord *manager = alive->m_entries.catalogue()->fileManager();
        if (!manager)
            return tell(opened, QStringLiteral("no file manager is installed"));
        const bool canShow = takesFiles(manager->exec);
        alive->open(manager->path, canShow ? folders : QList<QUrl>(), opened);
    });
}

} // namespace moorline
