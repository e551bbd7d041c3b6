#include "support/DecimalText.h"

#include <QLocale>

namespace moorline {

QString decimalText(double value)
{
    const QString text = QString::number(value, 'f', QLocale::FloatingPointShortest);
    return text.contains(u'.') ? text : text + QStringLiteral(".0");
}

} // namespace moorline
