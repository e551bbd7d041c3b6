#pragma once

#include "chrome/BarWidget.h"
#include "settings/WidgetKind.h"

#include <functional>

namespace moorline {

class Symbols;
class WeatherService;

/// What the two weather widgets have in common: they follow the service, and a click opens the weather application.
class WeatherTile : public BarWidget {
    Q_OBJECT
public:
    /// Everything lent here outlives the widget.
    struct Context {
        const WeatherService &service;
        const Symbols &symbols;
        /// Nothing happens on a click while there is no such function.
        std::function<void()> openWeatherApp;
        /// The name of what the click opens; the system's own weather application while there is no such function.
        std::function<QString()> destination = nullptr;
    };

    WeatherTile(Context context, QGraphicsItem *parent);

    /// Higher than what is painted: a pointer that is thrown at the edge of the screen hits as well.
    [[nodiscard]] QRectF boundingRect() const override;
    [[nodiscard]] QPainterPath shape() const override;

protected:
    [[nodiscard]] const WeatherService &service() const { return m_context.service; }
    [[nodiscard]] const Symbols &symbols() const { return m_context.symbols; }
    /// The name of what a click opens.
    [[nodiscard]] QString destination() const;
    /// Looks what there is to show now.
    virtual void refresh() = 0;
    /// What is told of a widget of this kind that shows this, in words.
    void describe(WidgetKind kind, const QString &shown);

private:
    Context m_context;
};

} // namespace moorline
