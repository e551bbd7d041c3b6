#include "dock/DockWindowController.h"

#include "dock/BarMetrics.h"
#include "dock/DockBarView.h"
#include "dock/DockHostingView.h"
#include "dock/DockPanel.h"
#include "dock/PanelPlacement.h"
#include "platform/PanelWindow.h"
#include "platform/WindowServer.h"
#include "settings/SettingsStore.h"
#include "support/RectText.h"

#include <cmath>

namespace moorline {

namespace {

constexpr std::chrono::milliseconds debugInterval{1000};
/// How long a change of screens takes at most. Its last word may come without a signal, and windows that are moved from
/// a screen that goes may lose their place or what was drawn in them after it.
constexpr std::chrono::milliseconds screensSettlingTime{500};
/// Smaller changes of the content's width are not worth moving the panel.
constexpr qreal widthTolerance = 0.5;

unsigned collectionBehavior(bool overFullScreenApps)
{
    const auto always = unsigned(CollectionBehavior::canJoinAllSpaces) | unsigned(CollectionBehavior::stationary)
        | unsigned(CollectionBehavior::ignoresCycle);
    return overFullScreenApps ? always | unsigned(CollectionBehavior::fullScreenAuxiliary) : always;
}

SystemDockWatch::Context systemDockContext(const DockWindowController::Context &context)
{
    return {context.store, context.systemDock, context.screens, context.pointer, context.holds, context.clock};
}

FullScreenWatch::Context fullScreenContext(const DockWindowController::Context &context)
{
    return {context.store, context.spaceProbe, context.windowServer, context.workspace, context.screens,
        context.pointer, context.holds, context.clock};
}

} // namespace

DockWindowController::DockWindowController(Context context, MakeBar makeBar, QObject *parent)
    : QObject(parent)
    , m_context(context)
    , m_makeBar(std::move(makeBar))
    , m_slide(m_context.clock, [this](const QRectF &frame) { m_panel->setFrame(frame); })
    , m_systemDockWatch(systemDockContext(context))
    , m_fullScreenWatch(fullScreenContext(context))
    , m_contentWidth(BarMetrics::initialPanelWidth)
{
    connect(&m_systemDockWatch, &SystemDockWatch::changed, this, &DockWindowController::animateToCurrentPosition);
    connect(&m_fullScreenWatch, &FullScreenWatch::changed, this, &DockWindowController::animateToCurrentPosition);
}

DockWindowController::~DockWindowController() = default;

void DockWindowController::show()
{
    if (m_panel)
        return;
    buildPanel();
    // A bar that starts in a full-screen space is out of sight before it shows.
    m_fullScreenWatch.look();
    reposition();
    m_context.panelWindow.orderFrontRegardless();
    observe();
    m_systemDockWatch.restart();
    m_fullScreenWatch.start();
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
}

void DockWindowController::screensChanged()
{
    fitToScreens();
    m_screensTimer = m_context.clock.after(screensSettlingTime, [this] {
        fitToScreens();
        m_panel->content()->update();
    });
}

void DockWindowController::fitToScreens()
{
    m_bar->refit();
    reposition();
}

void DockWindowController::settingsChanged()
{
    applyCollectionBehavior();
    m_fullScreenWatch.look();
    m_systemDockWatch.restart();
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
    const QSizeF size(m_contentWidth, m_bar ? m_bar->bodyHeight() : BarMetrics::panelHeight);
    return shownPanelFrame(targetScreen(), size, m_context.store.settings().bottomGap);
}

QRectF DockWindowController::targetFrame() const
{
    const QRectF shown = shownFrame();
    return isHiddenForSystemDock() || isHiddenForFullScreen() ? hiddenPanelFrame(targetScreen(), shown) : shown;
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

void DockWindowController::logTick() const
{
    const QWidget *content = m_panel->content();
    const QRectF contentFrame = content ? QRectF(content->geometry()) : QRectF();
    qInfo().noquote()
        << QStringLiteral("Moorline: tick frame=%1 content=%2").arg(rectText(m_panel->frame()), rectText(contentFrame));
}

} // namespace moorline
