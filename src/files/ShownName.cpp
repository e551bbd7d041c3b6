#include "files/ShownName.h"

#include "support/FileUrls.h"

#include <algorithm>

namespace moorline {

namespace {

/// The pictures of the control characters stand in their order.
constexpr char16_t firstControlPicture = 0x2400;
constexpr char16_t deletePicture = 0x2421;

bool turnsDirection(char16_t unit)
{
    return unit == 0x061c || unit == 0x200e || unit == 0x200f || (unit >= 0x202a && unit <= 0x202e)
        || (unit >= 0x2066 && unit <= 0x2069);
}

bool endsLine(char16_t unit)
{
    return (unit >= 0x80 && unit <= 0x9f) || unit == 0x2028 || unit == 0x2029;
}

QChar mark(QChar character)
{
    const char16_t unit = character.unicode();
    if (unit < 0x20)
        return QChar(char16_t(firstControlPicture + unit));
    if (unit == 0x7f)
        return QChar(deletePicture);
    return turnsDirection(unit) || endsLine(unit) ? QChar(QChar::ReplacementCharacter) : character;
}

} // namespace

QString shownName(const QUrl &file)
{
    const QByteArray path = pathBytes(file);
    QString name = QString::fromUtf8(path.mid(path.lastIndexOf('/') + 1));
    std::transform(name.begin(), name.end(), name.begin(), mark);
    return name;
}

} // namespace moorline
