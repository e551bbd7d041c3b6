#pragma once

#include "platform/Clock.h"

#include <QCoroTask>
#include <QObject>

namespace moorline {

class BarHolds;
class Pointer;
class Screens;
class SettingsStore;
class SpaceProbe;
class WindowServer;
class Workspace;

/// Watches whether a full-screen space needs the bar's place, unless the bar is to show there too. Meanwhile the
/// pointer lets it peek in by touching the bottom edge.
class FullScreenWatch final : public QObject {
    Q_OBJECT
public:
    /// Everything lent here outlives the watch.
    struct Context {
        const SettingsStore &store;
        const SpaceProbe &spaceProbe;
        const WindowServer &windowServer;
        const Workspace &workspace;
        const Screens &screens;
        const Pointer &pointer;
        const BarHolds &holds;
        Clock &clock;
    };

    explicit FullScreenWatch(Context context, QObject *parent = nullptr);

    /// Looks now, whenever something happens that may change what there is to see, and every second.
    void start();
    void look();

    [[nodiscard]] bool keepsPanelAway() const { return m_state == State::away; }

Q_SIGNALS:
    /// The space needs the place, or no longer does.
    void changed();

private:
    enum class State {
        /// The space is an ordinary one, or the bar shows in every one.
        ordinary,
        away,
        peeking,
    };

    void lookSoon();
    QCoro::Task<> lookOnceSpaceSettled();
    void peek();
    void holdsChanged();
    void setState(State state);

    Context m_context;
    State m_state = State::ordinary;
    std::unique_ptr<Clock::Timer> m_regularLook;
    std::unique_ptr<Clock::Timer> m_nextLook;
    std::unique_ptr<Clock::Timer> m_peekTimer;
};

} // namespace moorline
