#pragma once

#include "chrome/BarWidget.h"

#include <QDateTime>

namespace moorline {

class TimeKeeper;

/// How much of the calendar year has passed at `now` in its own time zone, from 0 to 1; 0 for an invalid time.
[[nodiscard]] double yearProgress(const QDateTime &now);
/// Whole percent, cut off and not rounded, such as "99%".
[[nodiscard]] QString percentString(double progress);

/// How far the year has come, as a number and as a bar.
class MonthCounterWidget final : public BarWidget {
    Q_OBJECT
public:
    explicit MonthCounterWidget(const TimeKeeper &keeper, QGraphicsItem *parent = nullptr);

    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;

private:
    void measure() override;
    void refresh();

    const TimeKeeper &m_keeper;
    QString m_percent;
    QString m_year;
    /// Of the filled part of the bar, in points.
    qreal m_fillWidth = 0;
};

} // namespace moorline
