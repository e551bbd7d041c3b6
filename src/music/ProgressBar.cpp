#include "music/ProgressBar.h"

#include "theme/Shapes.h"

#include <QPainter>
#include <cmath>
#include <utility>

namespace moorline {

namespace {

const QColor trackColor = QColor::fromRgbF(1, 1, 1, 0.12F);
const QColor fillColor = QColor::fromRgbF(1, 1, 1, 0.55F);
/// Half a point is one pixel on a screen of scale 2; finer steps would only be repainted, not seen.
constexpr qreal fillStep = 0.5;

} // namespace

ProgressBar::ProgressBar(QGraphicsItem *parent)
    : QGraphicsWidget(parent)
{
    setAcceptedMouseButtons(Qt::NoButton);
}

void ProgressBar::setProgress(double progress)
{
    const double before = std::exchange(m_progress, progress);
    if (fillWidth(progress) != fillWidth(before))
        update();
}

qreal ProgressBar::fillWidth(double progress) const
{
    return std::floor(size().width() * progress / fillStep) * fillStep;
}

void ProgressBar::paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *)
{
    const qreal radius = height / 2;
    const QRectF fill(0, 0, fillWidth(m_progress), size().height());
    painter->setRenderHint(QPainter::Antialiasing);
    painter->fillPath(continuousRoundedRect(rect(), radius), trackColor);
    painter->fillPath(continuousRoundedRect(fill, radius), fillColor);
}

} // namespace moorline
