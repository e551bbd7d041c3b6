#include "theme/TextFamily.h"

#include "platform/SystemFont.h"

#include <QApplication>
#include <QFontDatabase>

namespace moorline {

TextFamily::TextFamily(const SystemFont &systemFont, QObject *parent)
    : QObject(parent)
    , m_systemFont(systemFont)
    , m_usual(QApplication::font())
{
    connect(&systemFont, &SystemFont::familyChanged, this, &TextFamily::follow);
    follow();
}

TextFamily::~TextFamily()
{
    use(m_usual);
}

void TextFamily::follow()
{
    QFont font = m_usual;
    const QString family = m_systemFont.family();
    if (!family.isEmpty() && QFontDatabase::isSmoothlyScalable(family))
        font.setFamily(family);
    use(font);
}

void TextFamily::use(const QFont &font)
{
    if (font.families() != QApplication::font().families())
        QApplication::setFont(font);
}

} // namespace moorline
