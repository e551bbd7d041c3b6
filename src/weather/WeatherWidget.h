#pragma once

#include "weather/WeatherDisplay.h"
#include "weather/WeatherTile.h"

namespace moorline {

/// The weather now: a symbol beside the temperature and the place.
class WeatherWidget final : public WeatherTile {
    Q_OBJECT
public:
    explicit WeatherWidget(Context context, QGraphicsItem *parent = nullptr);

    /// What the tooltip says.
    [[nodiscard]] const QString &helpText() const { return m_shown.helpText; }

    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;

protected:
    void measure() override;
    void refresh() override;

private:
    void paintSymbol(QPainter &painter) const;

    WeatherDisplay m_shown;
};

} // namespace moorline
