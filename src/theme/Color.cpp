#include "theme/Color.h"

#include <QtMath>

namespace moorline {

namespace {

QColor fromPackedRgba(uint rgba)
{
    const auto byte = [rgba](int position) { return int((rgba >> (8 * position)) & 0xffU); };
    return {byte(3), byte(2), byte(1), byte(0)};
}

int eightBits(float component)
{
    return qBound(0, qRound(component * 255), 255);
}

} // namespace

QColor colorFromHex(const QString &hex)
{
    QString digits = hex.trimmed();
    if (digits.startsWith(u'#'))
        digits.remove(0, 1);
    const uint number = digits.toUInt(nullptr, 16);
    switch (digits.size()) {
    case 6:
        return fromPackedRgba((number << 8U) | 0xffU);
    case 8:
        return fromPackedRgba(number);
    default:
        return Qt::white;
    }
}

QString hexString(const QColor &color)
{
    const QColor rgb = color.toRgb();
    return QColor(eightBits(rgb.redF()), eightBits(rgb.greenF()), eightBits(rgb.blueF())).name(QColor::HexRgb);
}

} // namespace moorline
