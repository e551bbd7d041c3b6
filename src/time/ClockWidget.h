#pragma once

#include "chrome/BarWidget.h"
#include "settings/Settings.h"

#include <QDateTime>

namespace moorline {

class SettingsStore;
class TimeKeeper;

/// "1:05", "13:05", and with seconds "13:05:09"; the same digits and separators in every region, never a day period.
[[nodiscard]] QString timeString(const QTime &time, ClockFormat format, bool showSeconds);
/// Weekday, month and day in the user's language, such as "Tue, Mar 4".
[[nodiscard]] QString dateString(const QDate &date);

/// The time above the date.
class ClockWidget final : public BarWidget {
    Q_OBJECT
public:
    ClockWidget(const SettingsStore &store, const TimeKeeper &keeper, QGraphicsItem *parent = nullptr);

    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;

private:
    void measure() override;
    void refresh();

    const SettingsStore &m_store;
    const TimeKeeper &m_keeper;
    QString m_time;
    QString m_date;
};

} // namespace moorline
