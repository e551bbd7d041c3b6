#include "dock/FullScreenWatch.h"

#include "chrome/BarHolds.h"
#include "dock/PanelPlacement.h"
#include "platform/Pointer.h"
#include "platform/WindowServer.h"
#include "platform/Workspace.h"
#include "settings/SettingsStore.h"
#include "system/SpaceProbe.h"

#include <QPointer>

namespace moorline {

namespace {

using std::chrono::milliseconds;

constexpr milliseconds regularInterval{1000};
constexpr milliseconds peekInterval{80};
/// How long the window server takes to tell the truth after a switch of spaces.
constexpr milliseconds spaceSettlingTime{350};
/// Windows change in bursts, and all the time while one is dragged. One look does for all that comes meanwhile.
constexpr milliseconds burstTime{100};

} // namespace

FullScreenWatch::FullScreenWatch(Context context, QObject *parent)
    : QObject(parent)
    , m_context(context)
{
}

void FullScreenWatch::start()
{
    connect(&m_context.windowServer, &WindowServer::windowsChanged, this, &FullScreenWatch::lookSoon);
    connect(&m_context.workspace, &Workspace::activeSpaceChanged, this, [this] { lookOnceSpaceSettled(); });
    connect(&m_context.workspace, &Workspace::applicationActivated, this, [this] { lookOnceSpaceSettled(); });
    connect(&m_context.holds, &BarHolds::heldChanged, this, &FullScreenWatch::holdsChanged);
    look();
    m_regularLook = m_context.clock.every(regularInterval, [this] { look(); });
}

void FullScreenWatch::look()
{
    const bool isEngaged = m_state != State::ordinary;
    const bool engages = !m_context.store.settings().showOverFullScreenApps
        && m_context.spaceProbe.isFullScreen(targetScreen(m_context.screens.screens()));
    if (engages == isEngaged)
        return;
    if (engages) {
        m_peekTimer = m_context.clock.every(peekInterval, [this] { peek(); });
        setState(m_context.holds.isHeld() ? State::peeking : State::away);
    } else {
        m_peekTimer.reset();
        setState(State::ordinary);
    }
}

void FullScreenWatch::lookSoon()
{
    if (m_nextLook)
        return;
    m_nextLook = m_context.clock.after(burstTime, [this] {
        m_nextLook.reset();
        look();
    });
}

QCoro::Task<> FullScreenWatch::lookOnceSpaceSettled()
{
    QPointer<FullScreenWatch> alive(this);
    co_await m_context.clock.sleep(spaceSettlingTime);
    if (alive)
        look();
}

void FullScreenWatch::peek()
{
    const auto height = pointerHeight(targetScreen(m_context.screens.screens()), m_context.pointer.location());
    if (!height)
        return;
    const bool staysOut = staysOutOfFullScreen(*height, m_state == State::away);
    // What is held never leaves, but always may come back.
    if (!staysOut || !m_context.holds.isHeld())
        setState(staysOut ? State::away : State::peeking);
}

void FullScreenWatch::holdsChanged()
{
    if (m_context.holds.isHeld())
        return;
    look();
    if (m_state == State::peeking)
        peek();
}

void FullScreenWatch::setState(State state)
{
    const bool wasAway = keepsPanelAway();
    m_state = state;
    if (keepsPanelAway() != wasAway)
        Q_EMIT changed();
}

} // namespace moorline
