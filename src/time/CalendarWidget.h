#pragma once

#include "chrome/BarWidget.h"

namespace moorline {

class TimeKeeper;

/// A calendar page: the weekday above the day of the month.
class CalendarWidget final : public BarWidget {
    Q_OBJECT
public:
    explicit CalendarWidget(const TimeKeeper &keeper, QGraphicsItem *parent = nullptr);

    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;

private:
    void measure() override;
    void refresh();

    const TimeKeeper &m_keeper;
    QString m_weekday;
    QString m_day;
};

} // namespace moorline
