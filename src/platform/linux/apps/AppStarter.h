#pragma once

#include "freedesktop/EntryRecord.h"
#include "platform/linux/apps/ChildProcesses.h"
#include "platform/linux/apps/LaunchScopes.h"
#include "platform/qt/Background.h"

#include <QCoroTask>
#include <QHash>
#include <QUrl>
#include <functional>

namespace moorline {

class Bus;
class DesktopEntries;
class StartupMessages;
struct LaunchManner;
struct LaunchOutcome;

/// Everything that is started from the bar is started here: with the environment that the program itself was started
/// with, in a session of its own, and where there is a service manager in a scope of its own. Nothing here waits.
class AppStarter final : public QObject {
    Q_OBJECT
public:
    /// Called once, from the event loop: with a description of what went wrong, or without one.
    using Opened = std::function<void(const std::optional<QString> &error)>;
    /// When the user asked for what is being done now, by the X server's clock; zero where nobody knows.
    using UserTime = std::function<quint32()>;

    /// What is lent outlives it. `environment` is what the program was started with, as "NAME=value"; `messages` is
    /// null without an X server.
    AppStarter(DesktopEntries &entries, Bus &sessionBus, Clock &clock, QList<QByteArray> environment,
        const StartupMessages *messages, UserTime userTime);
    ~AppStarter() override;

    /// Starts the application of the entry at `path`, or has it open the files. `opened` may be empty.
    void open(const QString &path, const QList<QUrl> &files, Opened opened);
    /// Called once: whether there was anybody to do it.
    using Heard = std::function<void(bool isHeard)>;
    /// Has the application of the entry at `path` do one of the further things that the entry offers.
    void startAction(const QString &path, const QString &action, const Heard &heard);
    /// With the browser of the user's choice.
    void openAddress(const QUrl &address);
    /// Has the file manager show the files selected, or else the folders they are in.
    void reveal(const QList<QUrl> &files);
    /// In a window of the file manager. `opened` may be empty.
    void showFolder(const QUrl &folder, Opened opened);
    /// A program that has no entry, by its name in PATH or its path.
    void startProgram(const QString &program, const QStringList &arguments);

Q_SIGNALS:
    /// The entry at `path` has a process, that was told this startup id.
    void started(const QString &path, const QString &startupId, qint64 process);
    /// That process ended. Others of the application may go on.
    void ended(const QString &path, qint64 process);

private:
    /// One thing that is being started.
    struct Launch {
        /// Of the entry; empty for a program without one.
        QString path;
        QString id;
        QByteArray startupId;
        QList<QByteArray> uris = {};
        Opened opened = nullptr;
    };
    /// A process that was started, and for which.
    struct Origin {
        QString path;
        QByteArray startupId;
        bool isAnnounced = false;
    };

    [[nodiscard]] QByteArray newStartupId(const QString &entryId);
    [[nodiscard]] LaunchManner manner(const Launch &launch, const EntryRecord &record);
    void begin(const Launch &launch, const std::optional<EntryRecord> &record);
    QCoro::Task<> activate(Launch launch, EntryRecord record);
    void run(const Launch &launch, const EntryRecord &record);
    QCoro::Task<> askForAction(Launch launch, EntryRecord record, QString action, Heard heard);
    void runAction(const Launch &launch, const EntryRecord &record, const QString &action, const Heard &heard);
    /// On another thread. `then` may be empty.
    void runApart(const Launch &launch, const EntryRecord &record,
        const std::function<LaunchOutcome(const LaunchManner &)> &work, const Heard &then);
    void take(const Launch &launch, const EntryRecord &record, const LaunchOutcome &outcome);
    void announce(const EntryRecord &record, const Launch &launch) const;
    void unannounce(const QByteArray &startupId) const;
    void noteEnd(qint64 process);
    /// `fallback` are the folders to open where nobody answers.
    QCoro::Task<> askFileManager(QString method, QList<QUrl> subjects, QList<QUrl> fallback, Opened opened);
    void openFolders(const QList<QUrl> &folders, const Opened &opened);

    DesktopEntries &m_entries;
    Bus &m_bus;
    Clock &m_clock;
    QList<QByteArray> m_environment;
    const StartupMessages *m_messages;
    UserTime m_userTime;
    quint64 m_launches = 0;
    QHash<qint64, Origin> m_origins;
    ChildProcesses m_children;
    LaunchScopes m_scopes;
    /// An entry on a disk that does not answer keeps one of them, and nobody from starting another.
    Background m_background{8};
};

} // namespace moorline
