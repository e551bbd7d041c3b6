#include "weather/WeatherTile.h"

#include "weather/WeatherService.h"

#include <QGraphicsSceneMouseEvent>

namespace moorline {

WeatherTile::WeatherTile(Context context, QGraphicsItem *parent)
    : BarWidget(parent)
    , m_context(std::move(context))
{
    setAcceptedMouseButtons(Qt::LeftButton);
    const WeatherService *weather = &m_context.service;
    connect(weather, &WeatherService::snapshotChanged, this, [this] { refresh(); });
    connect(weather, &WeatherService::resolvedLocationChanged, this, [this] { refresh(); });
    connect(weather, &WeatherService::lastErrorChanged, this, [this] { refresh(); });
}

QRectF WeatherTile::boundingRect() const
{
    // Beyond both edges of the pill, which takes no input outside of itself.
    constexpr qreal reach = 24;
    return rect().isEmpty() ? rect() : rect().marginsAdded({0, reach, 0, reach});
}

QPainterPath WeatherTile::shape() const
{
    QPainterPath area;
    area.addRect(boundingRect());
    return area;
}

void WeatherTile::mousePressEvent(QGraphicsSceneMouseEvent *event)
{
    m_pressed = event->button() == Qt::LeftButton;
}

void WeatherTile::mouseReleaseEvent(QGraphicsSceneMouseEvent *event)
{
    const bool isClick = std::exchange(m_pressed, false) && event->button() == Qt::LeftButton;
    if (!isClick || !boundingRect().contains(event->pos()))
        return;
    if (m_context.openWeatherApp)
        m_context.openWeatherApp();
}

void WeatherTile::mouseDoubleClickEvent(QGraphicsSceneMouseEvent *event)
{
    // The first click of the two has opened the application.
    event->accept();
}

} // namespace moorline
