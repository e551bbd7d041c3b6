#include "dock/DockHostingView.h"

#include "dock/DockBarView.h"

#include <QResizeEvent>

namespace moorline {

DockHostingView::DockHostingView(std::unique_ptr<DockBarView> bar, QWidget *parent)
    : QGraphicsView(parent)
    , m_bar(bar.get())
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
    m_bar->disappear();
    QGraphicsView::hideEvent(event);
}

} // namespace moorline
