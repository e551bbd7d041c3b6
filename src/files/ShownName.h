#pragma once

#include <QString>
#include <QUrl>

namespace moorline {

/// The last part of a file's path as it is shown: on one line, from left to right as it stands. Characters that would
/// break the line or turn the direction of what follows are shown as marks, and so are bytes that are no text: a name
/// shall not pretend to be another.
[[nodiscard]] QString shownName(const QUrl &file);

} // namespace moorline
