#pragma once

#include "freedesktop/NewWindows.h"
#include "freedesktop/OpenApplications.h"
#include "freedesktop/WindowIdentities.h"
#include "platform/Clock.h"
#include "platform/linux/apps/ProcessBook.h"
#include "platform/linux/x11/ClientWindow.h"

namespace moorline {

class ClientWindows;
class DesktopEntries;

/// The applications that have windows which a taskbar would show, kept up to date as windows, processes and desktop
/// entries come and go.
class RunningSet final : public QObject {
    Q_OBJECT
public:
    /// What happens within this is one change.
    static constexpr std::chrono::milliseconds settlingTime{20};

    struct Member {
        /// Names it for as long as it runs.
        quint64 id = 0;
        OpenApplication application;

        bool operator==(const Member &) const = default;
    };

    /// What is lent outlives it.
    RunningSet(ClientWindows &clients, DesktopEntries &entries, Clock &clock);

    /// In the order in which they were started, as far as that is known. Absent while no window manager runs, until the
    /// entries were read, and until it is known whose the windows are that were there before.
    [[nodiscard]] const std::optional<QList<Member>> &members() const { return m_members; }
    /// Null where it does not run any more.
    [[nodiscard]] const Member *find(quint64 id) const;
    /// The application of the active window; null where there is none.
    [[nodiscard]] const Member *active() const;
    /// The windows that were the active one, the last of them first.
    [[nodiscard]] const QList<XWindowId> &lastActive() const { return m_lastActive; }
    /// The program was started here, for the entry at that path.
    void noteLaunch(qint64 process, const QString &path) { m_processes.noteLaunch(process, path); }
    /// That program ended.
    void noteEnd(qint64 process) { m_processes.noteEnd(process); }

Q_SIGNALS:
    /// Members may be others, or what the entries say of them.
    void refreshed();
    /// Another window is the active one, or belongs to another application now. Follows upon refreshed().
    void activeChanged();

private:
    void scheduleRefresh();
    void refresh();
    void noteActive(const ClientSnapshot &snapshot);
    /// Those windows of which it is known whose they are, and those of which it will not be known soon.
    [[nodiscard]] QList<WindowFacts> identified(const QList<WindowFacts> &windows);
    [[nodiscard]] QList<Member> membersAmong(const QList<WindowFacts> &windows);
    [[nodiscard]] quint64 idOf(const QString &key, const QHash<QString, quint64> &known);

    ClientWindows &m_clients;
    DesktopEntries &m_entries;
    Clock &m_clock;
    ProcessBook m_processes;
    WindowIdentities m_identities;
    QHash<XWindowId, QString> m_entryOf;
    NewWindows m_newWindows;
    std::optional<QList<Member>> m_members;
    QHash<QString, quint64> m_ids;
    quint64 m_lastId = 0;
    XWindowId m_active = 0;
    quint64 m_activeMember = 0;
    QList<XWindowId> m_lastActive;
    bool m_isLoaded = false;
    bool m_knowsActive = false;
    bool m_hasBegun = false;
    std::unique_ptr<Clock::Timer> m_settling;
    /// While a window is kept back.
    std::unique_ptr<Clock::Timer> m_patience;
};

/// The windows that a window manager keeps, in the order of the snapshot.
[[nodiscard]] QList<WindowFacts> factsOf(const ClientSnapshot &snapshot);

} // namespace moorline
