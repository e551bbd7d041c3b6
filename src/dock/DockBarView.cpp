#include "dock/DockBarView.h"

#include "chrome/BarStage.h"
#include "chrome/BarWidget.h"
#include "dock/AutoHideNudge.h"
#include "dock/BarMetrics.h"
#include "dock/PanelPlacement.h"
#include "dock/Pill.h"
#include "settings/SettingsStore.h"
#include "system/SystemDock.h"
#include "theme/Color.h"

#include <algorithm>
#include <cmath>

namespace moorline {

using namespace BarMetrics;

namespace {

constexpr std::chrono::seconds taskInterval{2};

/// The room for the whole pill on the primary screen.
qreal maximumPillWidth(const Screens &screens)
{
    const auto screen = targetScreen(screens.screens());
    const bool isPrimary = screen && screen->frame.topLeft() == QPointF(0, 0);
    return isPrimary ? screen->frame.width() - screenSideMargins : assumedMaximumWidth;
}

/// The widget of this kind, removed from the row; null when there is none.
BarWidget *takenOut(QList<Pill::Entry> &row, WidgetKind kind)
{
    const auto found =
        std::find_if(row.begin(), row.end(), [kind](const Pill::Entry &entry) { return entry.kind == kind; });
    if (found == row.end())
        return nullptr;
    BarWidget *widget = found->widget;
    row.erase(found);
    return widget;
}

} // namespace

DockBarView::DockBarView(Context context, ContentWidthChange onContentWidthChange)
    : m_context(std::move(context))
    , m_onContentWidthChange(std::move(onContentWidthChange))
    , m_dockConflicts(m_context.systemDock.conflictsWithDockBar())
    , m_pill(new Pill(this))
    , m_nudge(new AutoHideNudge(m_context.symbols, this))
{
    m_pill->setStage(&m_context.stage);
    connect(m_pill, &Pill::widthChanged, this, &DockBarView::pillWidthChanged);
    connect(m_pill, &Pill::itemsMoved, this, &DockBarView::itemsMoved);
    connect(m_pill, &Pill::menuRequested, this, &DockBarView::openMenu);
    connect(m_pill, &Pill::filesDropped, &m_context.store, &SettingsStore::pin);
    connect(m_nudge, &AutoHideNudge::accepted, this, [this] { m_context.systemDock.enableAutoHide(); });
    connect(m_nudge, &AutoHideNudge::naturalWidthChanged, this, &DockBarView::nudgeWidthChanged);
    connect(&m_context.store, &SettingsStore::settingsDidChange, this, &DockBarView::settingsChanged);
    m_nudge->setVisible(isNudgeShown());
    settingsChanged();
    // Also a row without a single widget has a width.
    reportContentWidth();
}

DockBarView::~DockBarView() = default;

void DockBarView::appear()
{
    evaluate();
    m_task = m_context.clock.every(taskInterval, [this] { evaluate(); });
}

void DockBarView::disappear()
{
    m_task.reset();
}

void DockBarView::evaluate()
{
    m_dockConflicts = m_context.systemDock.conflictsWithDockBar();
    updateNudge();
    const Playback playback = m_context.playback();
    m_isMusicVisible = isMusicVisible(m_context.store.settings(), playback, m_context.clock.now());
    updateRow();
}

void DockBarView::settingsChanged()
{
    const QColor accent = colorFromHex(m_context.store.settings().highlightColorHex);
    m_pill->setDropColor(accent);
    m_context.stage.setAccent(accent);
    updateNudge();
    updateRow();
}

void DockBarView::refit()
{
    refitIcons(m_pill->size().width());
    reportContentWidth();
}

void DockBarView::recentAppsChanged()
{
    // The widget itself says when its width changes.
    updateRow();
}

BarState DockBarView::state() const
{
    return {.musicVisible = m_isMusicVisible, .recentApps = m_context.recentApps ? m_context.recentApps() : 0};
}

QList<WidgetKind> DockBarView::row() const
{
    QList<WidgetKind> kinds;
    for (const Pill::Entry &entry : m_pill->row())
        kinds.append(entry.kind);
    return kinds;
}

void DockBarView::updateRow()
{
    QList<WidgetKind> kinds = moorline::visibleWidgets(m_context.store.settings(), state());
    if (kinds == m_visibleKinds)
        return;
    m_visibleKinds = std::move(kinds);
    QList<Pill::Entry> standing = m_pill->row();
    QList<Pill::Entry> entries;
    for (const WidgetKind kind : std::as_const(m_visibleKinds)) {
        BarWidget *known = takenOut(standing, kind);
        if (BarWidget *widget = known ? known : m_context.makeWidget(kind).release())
            entries.append({.kind = kind, .widget = widget});
    }
    m_pill->setRow(entries);
}

qreal DockBarView::iconSize() const
{
    return m_pill->iconSize();
}

void DockBarView::refitIcons(qreal measuredWidth)
{
    const IconCounts icons = iconCounts(row(), m_context.store.settings(), state());
    const qreal fitted = fittedIconSize(icons, measuredWidth, iconSize(), maximumPillWidth(m_context.screens));
    if (fitted != iconSize())
        m_pill->setIconSize(fitted);
}

void DockBarView::pillWidthChanged()
{
    const qreal measuredWidth = m_pill->size().width();
    refitIcons(measuredWidth);
    // Icons of another size make another width, which has been dealt with by now.
    if (m_pill->size().width() != measuredWidth)
        return;
    layOut();
    reportContentWidth();
}

void DockBarView::nudgeWidthChanged()
{
    layOut();
    reportContentWidth();
}

void DockBarView::reportContentWidth()
{
    const qreal pill = m_pill->size().width();
    // The nudge is part of the body: a panel as narrow as a short pill would cut its text and its button off.
    m_onContentWidthChange(isNudgeShown() ? std::max(pill, m_nudge->naturalWidth()) : pill);
}

bool DockBarView::isNudgeShown() const
{
    return m_context.store.settings().showAutoHideNudge && m_dockConflicts;
}

void DockBarView::updateNudge()
{
    if (m_nudge->isVisibleTo(this) == isNudgeShown())
        return;
    m_nudge->setVisible(isNudgeShown());
    layOut();
    Q_EMIT bodyHeightChanged();
    reportContentWidth();
}

qreal DockBarView::bodyHeight() const
{
    return isNudgeShown() ? panelHeightWithNudge : panelHeight;
}

void DockBarView::setGeometry(const QRectF &rect)
{
    QGraphicsWidget::setGeometry(rect);
    layOut();
}

void DockBarView::layOut()
{
    const qreal pillTop = size().height() - panelMargin - pillHeight;
    m_pill->setPos(std::floor((size().width() - m_pill->size().width()) / 2), pillTop);
    m_pill->setRoom(QRectF(-m_pill->pos(), size()));
    const qreal nudgeWidth = std::min(m_nudge->naturalWidth(), size().width());
    m_nudge->setGeometry(
        std::floor((size().width() - nudgeWidth) / 2), pillTop - nudgeGap - nudgeHeight, nudgeWidth, nudgeHeight);
    Q_EMIT interactiveAreaChanged();
}

QPainterPath DockBarView::interactiveArea() const
{
    QPainterPath area = m_pill->outline().translated(m_pill->pos());
    if (isNudgeShown())
        area.addPath(m_nudge->outline().translated(m_nudge->pos()));
    return area;
}

void DockBarView::openMenu(const QPointF &place)
{
    m_context.stage.openMenu({*m_pill, QRectF(place, QSizeF(0, 0))}, barMenu(m_context.store, m_context.commands));
}

} // namespace moorline
