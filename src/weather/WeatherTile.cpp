#include "weather/WeatherTile.h"

#include "settings/Choices.h"
#include "weather/WeatherService.h"

namespace moorline {

WeatherTile::WeatherTile(Context context, QGraphicsItem *parent)
    : BarWidget(parent)
    , m_context(std::move(context))
{
    setTouchable(bool(m_context.openWeatherApp));
    connect(this, &BarItem::clicked, this, [open = m_context.openWeatherApp] { open(); });
    const WeatherService *weather = &m_context.service;
    connect(weather, &WeatherService::snapshotChanged, this, [this] { refresh(); });
    connect(weather, &WeatherService::resolvedLocationChanged, this, [this] { refresh(); });
    connect(weather, &WeatherService::lastErrorChanged, this, [this] { refresh(); });
}

void WeatherTile::describe(WidgetKind kind, const QString &shown)
{
    const auto role = isTouchable() ? QAccessible::Button : QAccessible::StaticText;
    setDescription({.role = role, .name = label(kind), .state = shown});
}

QString WeatherTile::destination() const
{
    return m_context.destination ? m_context.destination() : tr("Weather");
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

} // namespace moorline
