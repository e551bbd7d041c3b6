#pragma once

#include <QString>

namespace moorline {

/// The text as it stands in a script, quotation marks included.
[[nodiscard]] QString appleScriptText(QString text);

} // namespace moorline
