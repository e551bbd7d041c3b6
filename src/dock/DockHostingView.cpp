#include "dock/DockHostingView.h"

#include "dock/DockBarView.h"
#include "dock/HelpTag.h"

#include <QHelpEvent>
#include <QMouseEvent>

namespace moorline {

namespace {

/// Between the bar and what tells about it, in points.
constexpr int helpGap = 6;

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
        // The system's own would lie over the row.
        showHelp(static_cast<QHelpEvent *>(event)->pos());
        return true;
    case QEvent::MouseMove:
        if (helpfulItemAt(static_cast<QMouseEvent *>(event)->position().toPoint()) != m_helpItem)
            hideHelp();
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

const QGraphicsItem *DockHostingView::helpfulItemAt(const QPoint &place) const
{
    const QGraphicsItem *item = itemAt(place);
    while (item && item->toolTip().isEmpty())
        item = item->parentItem();
    return item;
}

void DockHostingView::showHelp(const QPoint &place)
{
    const QGraphicsItem *item = helpfulItemAt(place);
    if (!item) {
        hideHelp();
        return;
    }
    m_helpItem = item;
    const QRectF frame = item->sceneBoundingRect();
    const QPointF anchor(frame.center().x(), m_bar->interactiveArea().boundingRect().top() - helpGap);
    m_helpTag->showText(item->toolTip(), viewport()->mapToGlobal(mapFromScene(anchor)));
}

void DockHostingView::hideHelp()
{
    m_helpItem = nullptr;
    m_helpTag->hide();
}

} // namespace moorline
