#include "dock/DockWindowController.h"

#include "dock/BarMetrics.h"
#include "dock/DockBarView.h"
#include "dock/DockHostingView.h"
#include "dock/DockPanel.h"
#include "dock/PanelPlacement.h"
#include "platform/PanelWindow.h"
#include "platform/Pointer.h"
#include "platform/WindowServer.h"
#include "platform/Workspace.h"
#include "settings/SettingsStore.h"
#include "support/RectText.h"
#include "system/SpaceProbe.h"
#include "system/SystemDock.h"

#include <cmath>
#include <limits>

namespace moorline {

namespace {

using std::chrono::milliseconds;

constexpr milliseconds dockMonitorInterval{100};
constexpr milliseconds peekInterval{80};
constexpr milliseconds fullScreenCheckInterval{1000};
constexpr milliseconds debugInterval{1000};
/// How long the window server takes to tell the truth after a switch of spaces.
constexpr milliseconds spaceSettlingTime{350};
/// Smaller changes of the content's width are not worth moving the panel.
constexpr qreal widthTolerance = 0.5;

unsigned collectionBehavior(bool overFullScreenApps)
{
    const auto always = unsigned(CollectionBehavior::canJoinAllSpaces) | unsigned(CollectionBehavior::stationary)
        | unsigned(CollectionBehavior::ignoresCycle);
    return overFullScreenApps ? always | unsigned(CollectionBehavior::fullScreenAuxiliary) : always;
}

} // namespace

DockWindowController::DockWindowController(Context context, MakeBar makeBar, QObject *parent)
    : QObject(parent)
    , m_context(context)
    , m_makeBar(std::move(makeBar))
    , m_slide(m_context.clock, [this](const QRectF &frame) { m_panel->setFrame(frame); })
    , m_contentWidth(BarMetrics::initialPanelWidth)
{
}

DockWindowController::~DockWindowController() = default;

void DockWindowController::show()
{
    if (m_panel)
        return;
    buildPanel();
    evaluateFullScreen();
    reposition();
    m_context.panelWindow.orderFrontRegardless();
    observe();
    updateVisibilityMonitoring();
    evaluateFullScreen();
    m_fullScreenTimer = m_context.clock.every(fullScreenCheckInterval, [this] { evaluateFullScreen(); });
    if (m_context.debug)
        m_debugTimer = m_context.clock.every(debugInterval, [this] { logTick(); });
}

void DockWindowController::buildPanel()
{
    auto bar = m_makeBar([this](qreal width) { contentWidthChanged(width); });
    m_bar = bar.get();
    m_panel = std::make_unique<DockPanel>(m_context.panelWindow);
    m_panel->setContent(new DockHostingView(std::move(bar)));
    m_context.panelWindow.setLevel(m_context.windowServer.level(WindowLevel::dock) + 1);
    applyCollectionBehavior();
    const auto follow = [this] { m_context.panelWindow.setInteractiveArea(m_bar->interactiveArea()); };
    connect(m_bar, &DockBarView::interactiveAreaChanged, this, follow);
    connect(m_bar, &DockBarView::bodyHeightChanged, this, &DockWindowController::reposition);
}

void DockWindowController::observe()
{
    connect(&m_context.screens, &Screens::screensChanged, this, &DockWindowController::screensChanged);
    connect(&m_context.store, &SettingsStore::settingsDidChange, this, &DockWindowController::settingsChanged);
    const auto evaluate = [this] { evaluateAfterSpaceSettles(); };
    connect(&m_context.workspace, &Workspace::activeSpaceChanged, this, evaluate);
    connect(&m_context.workspace, &Workspace::applicationActivated, this, evaluate);
}

void DockWindowController::screensChanged()
{
    m_bar->refit();
    reposition();
}

void DockWindowController::settingsChanged()
{
    applyCollectionBehavior();
    evaluateFullScreen();
    updateVisibilityMonitoring();
    reposition();
}

void DockWindowController::applyCollectionBehavior()
{
    m_context.panelWindow.setCollectionBehavior(collectionBehavior(m_context.store.settings().showOverFullScreenApps));
}

std::optional<Screen> DockWindowController::targetScreen() const
{
    return moorline::targetScreen(m_context.screens.screens());
}

QRectF DockWindowController::shownFrame() const
{
    const Settings &settings = m_context.store.settings();
    const bool hasNudge = settings.showAutoHideNudge && m_context.systemDock.conflictsWithDockBar();
    const qreal height = hasNudge ? BarMetrics::panelHeightWithNudge : BarMetrics::panelHeight;
    return shownPanelFrame(targetScreen(), {m_contentWidth, height}, settings.bottomGap);
}

QRectF DockWindowController::targetFrame() const
{
    const QRectF shown = shownFrame();
    const bool hidden = m_isHiddenForSystemDock || m_isHiddenForFullScreen;
    return hidden ? hiddenPanelFrame(targetScreen(), shown) : shown;
}

void DockWindowController::contentWidthChanged(qreal measuredWidth)
{
    const auto screen = targetScreen();
    if (!screen)
        return;
    const qreal width = panelWidth(measuredWidth, screen->frame.width());
    if (std::abs(width - m_contentWidth) <= widthTolerance)
        return;
    m_contentWidth = width;
    reposition();
}

void DockWindowController::reposition()
{
    if (!m_panel)
        return;
    m_slide.stop();
    const QRectF target = targetFrame();
    m_panel->setFrame(target);
    if (m_context.debug) {
        qInfo().noquote() << QStringLiteral("Moorline: requested %1 -> actual %2 level %3")
                                 .arg(rectText(target), rectText(m_panel->frame()))
                                 .arg(m_context.panelWindow.level());
    }
}

void DockWindowController::animateToCurrentPosition()
{
    if (!m_panel)
        return;
    const QRectF target = targetFrame();
    if (m_slide.destination().value_or(m_panel->frame()) != target)
        m_slide.start(m_panel->frame(), target);
}

void DockWindowController::setHiddenForSystemDock(bool hidden)
{
    if (hidden == m_isHiddenForSystemDock)
        return;
    m_isHiddenForSystemDock = hidden;
    animateToCurrentPosition();
}

void DockWindowController::setHiddenForFullScreen(bool hidden)
{
    if (hidden == m_isHiddenForFullScreen)
        return;
    m_isHiddenForFullScreen = hidden;
    animateToCurrentPosition();
}

void DockWindowController::updateVisibilityMonitoring()
{
    m_pollTimer.reset();
    m_edgeEnteredAt.reset();
    if (m_context.store.settings().visibilityMode == DockVisibilityMode::hideWhenSystemDockAppears) {
        m_pollTimer = m_context.clock.every(dockMonitorInterval, [this] { evaluateHiding(); });
    } else if (m_isHiddenForSystemDock) {
        m_isHiddenForSystemDock = false;
        reposition();
    }
}

std::optional<qreal> DockWindowController::pointerHeight() const
{
    const auto screen = targetScreen();
    if (!screen)
        return std::nullopt;
    const QPointF pointer = m_context.pointer.location();
    const qreal height = pointer.y() - screen->frame.y();
    // The bottom edge of another screen is not ours, and nor is the screen below.
    const bool isOnScreen = height >= 0 && pointer.x() >= screen->frame.left() && pointer.x() <= screen->frame.right();
    return isOnScreen ? height : std::numeric_limits<qreal>::infinity();
}

void DockWindowController::evaluateHiding()
{
    const auto height = pointerHeight();
    if (!height)
        return;
    if (!isAtDockEdge(*height, m_isHiddenForSystemDock)) {
        m_edgeEnteredAt.reset();
        setHiddenForSystemDock(false);
        return;
    }
    const milliseconds now = m_context.clock.uptime();
    if (!m_edgeEnteredAt)
        m_edgeEnteredAt = now;
    const std::chrono::duration<double> resting = now - *m_edgeEnteredAt;
    if (resting.count() >= m_context.store.settings().hideDelaySeconds)
        setHiddenForSystemDock(m_context.systemDock.isRevealed());
}

bool DockWindowController::isFullScreen() const
{
    return m_context.spaceProbe.isFullScreen(targetScreen());
}

void DockWindowController::evaluateFullScreen()
{
    const bool staysOut = !m_context.store.settings().showOverFullScreenApps && isFullScreen();
    if (staysOut == m_fullScreenHideEngaged)
        return;
    m_fullScreenHideEngaged = staysOut;
    setHiddenForFullScreen(staysOut);
    if (staysOut)
        startPeekTimer();
    else
        m_peekTimer.reset();
}

QCoro::Task<> DockWindowController::evaluateAfterSpaceSettles()
{
    QPointer<DockWindowController> alive(this);
    co_await m_context.clock.sleep(spaceSettlingTime);
    if (alive)
        evaluateFullScreen();
}

void DockWindowController::startPeekTimer()
{
    m_peekTimer = m_context.clock.every(peekInterval, [this] { peek(); });
}

void DockWindowController::peek()
{
    if (const auto height = pointerHeight())
        setHiddenForFullScreen(staysOutOfFullScreen(*height, m_isHiddenForFullScreen));
}

void DockWindowController::logTick() const
{
    const QWidget *content = m_panel->content();
    const QRectF contentFrame = content ? QRectF(content->geometry()) : QRectF();
    qInfo().noquote()
        << QStringLiteral("Moorline: tick frame=%1 content=%2").arg(rectText(m_panel->frame()), rectText(contentFrame));
}

} // namespace moorline
