#include "dock/DockHostingView.h"

#include "chrome/BarItem.h"
#include "chrome/BarStage.h"
#include "chrome/HelpTag.h"
#include "dock/BarAccessibility.h"
#include "dock/DockBarView.h"

#include <QContextMenuEvent>
#include <QGraphicsObject>
#include <QMouseEvent>
#include <QTimer>

namespace moorline {

namespace {

/// How long the pointer rests before it is told anything.
constexpr std::chrono::milliseconds helpDelay{700};

} // namespace

DockHostingView::DockHostingView(std::unique_ptr<DockBarView> bar, QWidget *parent)
    : QGraphicsView(parent)
    , m_bar(bar.get())
    , m_stage(m_bar->stage())
    , m_look(new QTimer(this))
{
    // Before anything is told of this view: what was asked for once is kept.
    makeBarAccessible();
    auto *scene = new QGraphicsScene(this);
    // The index only pays in scenes of thousands of items.
    scene->setItemIndexMethod(QGraphicsScene::NoIndex);
    scene->addItem(bar.release());
    setScene(scene);
    setFrameStyle(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    setBackgroundBrush(Qt::NoBrush);
    viewport()->setAutoFillBackground(false);
    viewport()->setMouseTracking(true);
    setAccessibleName(QStringLiteral("Moorline"));
    const auto follow = [this] { m_stage.setBody(m_bar->interactiveArea()); };
    connect(m_bar, &DockBarView::interactiveAreaChanged, this, follow);
    follow();
    m_look->setSingleShot(true);
    // In a turn of its own: a row that changes moves its items more than once.
    for (const auto moved : {&DockBarView::interactiveAreaChanged, &DockBarView::itemsMoved})
        connect(m_bar, moved, m_look, [this] { m_look->start(0); });
    connect(m_look, &QTimer::timeout, this, &DockHostingView::lookBelowPointer);
}

DockHostingView::~DockHostingView() = default;

void DockHostingView::resizeEvent(QResizeEvent *event)
{
    QGraphicsView::resizeEvent(event);
    scene()->setSceneRect(QRectF(QPointF(0, 0), QSizeF(event->size())));
    m_bar->resize(event->size());
}

void DockHostingView::showEvent(QShowEvent *event)
{
    QGraphicsView::showEvent(event);
    m_bar->appear();
}

void DockHostingView::hideEvent(QHideEvent *event)
{
    hideHelp();
    m_stage.close();
    m_bar->disappear();
    QGraphicsView::hideEvent(event);
}

bool DockHostingView::viewportEvent(QEvent *event)
{
    switch (event->type()) {
    case QEvent::ToolTip:
        // The system's own tooltip would lie over the row.
        return true;
    case QEvent::Enter:
    case QEvent::MouseMove:
        pointerCame(*static_cast<QSinglePointEvent *>(event));
        break;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        hideHelp();
        m_isPressTaken = takesPress(*static_cast<QMouseEvent *>(event));
        if (m_isPressTaken)
            return true;
        break;
    case QEvent::MouseButtonRelease:
        return pointerWasLetGo(*static_cast<QMouseEvent *>(event));
    case QEvent::ContextMenu:
        // A right press calls for a menu beside.
        if (m_isPressTaken && static_cast<QContextMenuEvent *>(event)->reason() == QContextMenuEvent::Mouse)
            return true;
        break;
    case QEvent::Wheel:
    case QEvent::Leave:
        hideHelp();
        break;
    default:
        break;
    }
    return QGraphicsView::viewportEvent(event);
}

bool DockHostingView::takesPress(const QMouseEvent &press)
{
    // Of the second press in short order, Qt tells after it called for the menu.
    if (press.type() == QEvent::MouseButtonDblClick && press.button() == Qt::RightButton)
        return false;
    return m_stage.takesPress(mapToScene(press.position().toPoint()), press.button());
}

bool DockHostingView::pointerWasLetGo(QMouseEvent &release)
{
    m_isPressTaken = false;
    const QPointF place = mapToScene(release.position().toPoint());
    BarStage &stage = m_stage;
    const bool isHandled = QGraphicsView::viewportEvent(&release);
    // Last, as what it chooses may end the bar.
    stage.letPointerGo(place);
    return isHandled;
}

void DockHostingView::pointerCame(const QSinglePointEvent &event)
{
    m_pointer = event.position().toPoint();
    if (event.buttons() != Qt::NoButton)
        m_stage.leadPointer(mapToScene(m_pointer));
    const QGraphicsObject *item = event.buttons() == Qt::NoButton ? helpfulItemAt(m_pointer) : nullptr;
    const bool isShown = m_stage.helpTag().isVisible();
    if (isShown && item == m_helpItem)
        return;
    hideHelp();
    // Whoever reads one tag wants the next at once.
    if (item && isShown)
        showHelp();
    else if (item)
        m_helpTimer = m_bar->clock().after(helpDelay, [this] { showHelp(); });
}

void DockHostingView::lookBelowPointer()
{
    // A menu, and a press that may have become a drag, keep the pointer where it was led.
    const auto place = viewport()->underMouse() && !m_stage.isOpen() ? m_stage.restingPointer() : std::nullopt;
    if (!place)
        return;
    m_pointer = mapFromScene(*place);
    QMouseEvent move(
        QEvent::MouseMove, m_pointer, viewport()->mapToGlobal(m_pointer), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    mouseMoveEvent(&move);
    if (m_stage.helpTag().isVisible())
        showHelp();
    // What the look itself moved might go back and forth without end.
    m_look->stop();
}

QGraphicsObject *DockHostingView::helpfulItemAt(const QPoint &place) const
{
    QGraphicsItem *item = itemAt(place);
    while (item && item->toolTip().isEmpty())
        item = item->parentItem();
    return item ? item->toGraphicsObject() : nullptr;
}

void DockHostingView::showHelp()
{
    m_helpTimer.reset();
    disconnect(m_helpChange);
    QGraphicsObject *item = helpfulItemAt(m_pointer);
    if (!item)
        return hideHelp();
    m_helpItem = item;
    m_stage.showHelp(*item, item->toolTip());
    if (const auto *barItem = qobject_cast<const BarItem *>(item))
        m_helpChange = connect(barItem, &BarItem::helpTextChanged, this, &DockHostingView::showHelp);
}

void DockHostingView::hideHelp()
{
    disconnect(m_helpChange);
    m_helpTimer.reset();
    m_helpItem = nullptr;
    m_stage.hideHelp();
}

} // namespace moorline
