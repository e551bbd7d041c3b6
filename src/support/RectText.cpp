#include "support/RectText.h"

#include "support/DecimalText.h"

namespace moorline {

QString rectText(const QRectF &rect)
{
    return QStringLiteral("(%1, %2, %3, %4)")
        .arg(decimalText(rect.x()), decimalText(rect.y()), decimalText(rect.width()), decimalText(rect.height()));
}

} // namespace moorline
