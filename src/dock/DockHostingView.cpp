#include "dock/DockHostingView.h"

#include "chrome/BarWidget.h"
#include "chrome/HelpTag.h"
#include "dock/DockBarView.h"

#include <QSinglePointEvent>

namespace moorline {

namespace {

/// Between the bar and what tells about it, in points.
constexpr int helpGap = 6;
/// How long the pointer rests before it is told anything.
constexpr std::chrono::milliseconds helpDelay{700};

} // namespace

DockHostingView::DockHostingView(std::unique_ptr<DockBarView> bar, QWidget *parent)
    : QGraphicsView(parent)
    , m_bar(bar.get())
    , m_helpTag(new HelpTag(m_bar->clock(), this))
{
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
    case QEvent::Wheel:
    case QEvent::Leave:
        hideHelp();
        break;
    default:
        break;
    }
    return QGraphicsView::viewportEvent(event);
}

void DockHostingView::pointerCame(const QSinglePointEvent &event)
{
    m_pointer = event.position().toPoint();
    const QGraphicsItem *item = event.buttons() == Qt::NoButton ? helpfulItemAt(m_pointer) : nullptr;
    const bool isShown = m_helpTag->isVisible();
    if (isShown && item == m_helpItem)
        return;
    hideHelp();
    // Whoever reads one tag wants the next at once.
    if (item && isShown)
        showHelp();
    else if (item)
        m_helpTimer = m_bar->clock().after(helpDelay, [this] { showHelp(); });
}

const QGraphicsItem *DockHostingView::helpfulItemAt(const QPoint &place) const
{
    const QGraphicsItem *item = itemAt(place);
    while (item && item->toolTip().isEmpty())
        item = item->parentItem();
    return item;
}

void DockHostingView::showHelp()
{
    m_helpTimer.reset();
    disconnect(m_helpChange);
    const QGraphicsItem *item = helpfulItemAt(m_pointer);
    if (!item)
        return hideHelp();
    m_helpItem = item;
    const QRectF frame = item->sceneBoundingRect();
    const QPointF anchor(frame.center().x(), m_bar->interactiveArea().boundingRect().top() - helpGap);
    m_helpTag->showText(item->toolTip(), viewport()->mapToGlobal(mapFromScene(anchor)));
    if (const auto *widget = dynamic_cast<const BarWidget *>(item))
        m_helpChange = connect(widget, &BarWidget::helpTextChanged, this, &DockHostingView::showHelp);
}

void DockHostingView::hideHelp()
{
    disconnect(m_helpChange);
    m_helpTimer.reset();
    m_helpItem = nullptr;
    m_helpTag->hide();
}

} // namespace moorline
