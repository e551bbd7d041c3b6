#include "support/WeekdayText.h"

#include <QLocale>

namespace moorline {

QString weekdayString(const QDate &date)
{
    const QLocale locale;
    return locale.toUpper(locale.toString(date, QStringLiteral("ddd")));
}

} // namespace moorline
