#pragma once

#include <QDate>
#include <QString>

namespace moorline {

/// Upper-cased and short, in the user's language, such as "TUE".
[[nodiscard]] QString weekdayString(const QDate &date);

} // namespace moorline
