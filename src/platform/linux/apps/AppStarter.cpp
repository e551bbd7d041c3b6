#include "platform/linux/apps/AppStarter.h"

#include "freedesktop/LaunchRules.h"
#include "platform/linux/apps/DesktopEntries.h"
#include "platform/linux/apps/EntryLaunch.h"
#include "platform/linux/apps/EntryReader.h"
#include "platform/linux/apps/LaunchScope.h"
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

const QString folderManager = QStringLiteral("org.freedesktop.FileManager1");

QList<QByteArray> encoded(const QList<QUrl> &addresses)
{
    QList<QByteArray> uris;
    for (const QUrl &address : addresses)
        uris.append(address.toEncoded(QUrl::FullyEncoded));
    return uris;
}

QStringList texts(const QList<QByteArray> &uris)
{
    QStringList texts;
    for (const QByteArray &uri : uris)
        texts.append(QString::fromLatin1(uri));
    return texts;
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

QVariantMap platformData(const QByteArray &startupId)
{
    const QString token = QString::fromLatin1(startupId);
    return {{QStringLiteral("desktop-startup-id"), token}, {QStringLiteral("activation-token"), token}};
}

QDBusMessage applicationCall(const EntryRecord &record, const QString &method)
{
    return QDBusMessage::createMethodCall(
        record.id, busPath(record.id), QStringLiteral("org.freedesktop.Application"), method);
}

QDBusMessage activation(const EntryRecord &record, const QList<QByteArray> &uris, const QByteArray &startupId)
{
    if (uris.isEmpty())
        return applicationCall(record, QStringLiteral("Activate")) << platformData(startupId);
    return applicationCall(record, QStringLiteral("Open")) << texts(uris) << platformData(startupId);
}

QDBusMessage actionCall(const EntryRecord &record, const QString &action, const QByteArray &startupId)
{
    return applicationCall(record, QStringLiteral("ActivateAction"))
        << action << QVariantList() << platformData(startupId);
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

void AppStarter::startAction(const QString &path, const QString &action)
{
    const EntryRecord *record = m_entries.catalogue()->byPath(path);
    if (!record)
        return;
    // Nothing comes to the front by it, so nobody waits for a window.
    const Launch launch{.path = {}, .id = record->id, .startupId = newStartupId(record->id)};
    if (isStartedByBus(*record) && m_bus.isOpen()) {
        m_bus.connection().send(actionCall(*record, action, launch.startupId));
        return;
    }
    m_background.run<LaunchOutcome>(
        [path, action, manner = manner(launch, *record)] { return launchAction(path, action, manner); },
        [this, launch, one = *record](const LaunchOutcome &outcome) { take(launch, one, outcome); });
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
    askFileManager(QStringLiteral("ShowItems"), files, foldersOf(files));
}

void AppStarter::showFolder(const QString &path)
{
    const QUrl folder = QUrl::fromLocalFile(path);
    m_entries.whenLoaded([alive = QPointer<AppStarter>(this), folder] {
        if (!alive)
            return;
        if (alive->m_entries.catalogue()->fileManager())
            alive->openFolders({folder});
        else
            alive->askFileManager(QStringLiteral("ShowFolders"), {folder}, {});
    });
}

void AppStarter::startProgram(const QString &program, const QStringList &arguments)
{
    const EntryRecord record{.path = {}, .id = program.section(u'/', -1)};
    const Launch launch{.path = {}, .id = record.id, .startupId = newStartupId(record.id)};
    m_background.run<LaunchOutcome>(
        [program, arguments, manner = manner(launch, record)] { return launchProgram(program, arguments, manner); },
        [this, launch, record](const LaunchOutcome &outcome) { take(launch, record, outcome); });
}

QByteArray AppStarter::newStartupId(const QString &entryId)
{
    return startupId(entryId, QCoreApplication::applicationPid(), ++m_launches, m_userTime());
}

LaunchManner AppStarter::manner(const Launch &launch, const EntryRecord &record) const
{
    QList<QByteArray> own{"DESKTOP_STARTUP_ID=" + launch.startupId, "XDG_ACTIVATION_TOKEN=" + launch.startupId};
    // The window of what runs in a terminal is the terminal's.
    if (!record.terminal && !record.path.isEmpty())
        own.append("GIO_LAUNCHED_DESKTOP_FILE=" + QFile::encodeName(record.path));
    return {.environment = launchEnvironment(m_environment, own), .home = QFile::encodeName(QDir::homePath())};
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
        co_await ask(*this, m_bus, m_clock, activation(record, launch.uris, launch.startupId), longestActivation);
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
    m_background.run<LaunchOutcome>([path = record.path, uris = launch.uris,
                                        manner = manner(launch, record)] { return launchEntry(path, uris, manner); },
        [this, launch, record](const LaunchOutcome &outcome) { take(launch, record, outcome); });
}

void AppStarter::take(const Launch &launch, const EntryRecord &record, const LaunchOutcome &outcome)
{
    if (outcome.error) {
        qCDebug(logStart) << "not started:" << record.id << *outcome.error;
        unannounce(launch.startupId);
    }
    moveToOwnScope(m_bus, record.id, record.name.value_or(record.id), outcome.processes);
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

QCoro::Task<> AppStarter::askFileManager(QString method, QList<QUrl> subjects, QList<QUrl> fallback)
{
    const QPointer<AppStarter> alive(this);
    auto call = QDBusMessage::createMethodCall(
        folderManager, QStringLiteral("/org/freedesktop/FileManager1"), folderManager, method);
    call << texts(encoded(subjects)) << QString::fromLatin1(newStartupId(folderManager));
    const BusAnswer answer = co_await ask(*this, m_bus, m_clock, call, longestRequest);
    if (alive && answer.isError() && isNobodyThere(answer.errorName()))
        openFolders(fallback);
}

void AppStarter::openFolders(const QList<QUrl> &folders)
{
    if (folders.isEmpty())
        return;
    m_entries.whenLoaded([alive = QPointer<AppStarter>(this), folders] {
        const EntryRecord *manager = alive ? alive->m_entries.catalogue()->fileManager() : nullptr;
        if (!manager)
            return;
        const bool canShow = takesFiles(manager->exec);
        alive->open(manager->path, canShow ? folders : QList<QUrl>(), [alive, path = manager->path](const auto &error) {
            if (alive && error)
                Q_EMIT alive->failed(path);
        });
    });
}

} // namespace moorline
