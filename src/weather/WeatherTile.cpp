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

void WeatherTile::mousePressEvent(QGraphicsSceneMouseEvent *event)
{
    m_pressed = event->button() == Qt::LeftButton;
}

void WeatherTile::mouseReleaseEvent(QGraphicsSceneMouseEvent *event)
{
    const bool isClick = std::exchange(m_pressed, false) && event->button() == Qt::LeftButton;
    if (!isClick || !rect().contains(event->pos()))
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
