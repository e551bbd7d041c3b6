#pragma once

#include <QString>
#include <QStringList>

namespace moorline {

/// The words of an Exec key, without its field codes. Empty where its quotes do not close.
[[nodiscard]] QStringList execWords(const QString &exec);

} // namespace moorline
