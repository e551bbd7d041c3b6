#pragma once

#include "weather/WeatherDisplay.h"
#include "weather/WeatherTile.h"

namespace moorline {

/// The weather of the days to come, a column each. Without a forecast it is empty and has no width.
class ForecastWidget final : public WeatherTile {
    Q_OBJECT
public:
    explicit ForecastWidget(Context context, QGraphicsItem *parent = nullptr);

    /// Call when a click may open something else than before.
    void destinationChanged();

    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;

protected:
    void measure() override;
    void refresh() override;

private:
    void paintColumn(QPainter &painter, const ForecastColumn &column, qreal left) const;

    QList<ForecastColumn> m_columns;
};

} // namespace moorline
