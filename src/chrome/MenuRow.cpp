#include "chrome/MenuRow.h"

#include "chrome/MenuAccessibility.h"
#include "theme/Shapes.h"
#include "theme/Symbols.h"
#include "theme/Text.h"
#include "theme/Theme.h"

#include <QKeyEvent>
#include <QPainter>
#include <QtMath>

namespace moorline {

namespace {

constexpr TextStyle titleStyle{.size = 13};
constexpr int rowHeight = 24;
constexpr qreal sidePadding = 10;
constexpr qreal markSize = 11;
constexpr qreal markColumn = 20;
constexpr qreal cornerRadius = 6;

} // namespace

MenuRow::MenuRow(const MenuItem &item, Look look, QWidget *parent)
    : QAbstractButton(parent)
    , m_look(look)
    , m_mark(item.isChecked ? QStringLiteral("checkmark") : item.symbol)
{
    nameMenusForAccessibility();
    setText(item.title);
    setCheckable(item.isChecked);
    setChecked(item.isChecked);
    setEnabled(bool(item.action));
    setFocusPolicy(item.action ? Qt::StrongFocus : Qt::NoFocus);
}

void MenuRow::setHighlighted(bool highlighted)
{
    if (highlighted)
        setFocus();
    else
        clearFocus();
    update();
}

qreal MenuRow::titleLeft() const
{
    return sidePadding + (m_look.hasMarks ? markColumn : 0);
}

QSize MenuRow::sizeHint() const
{
    return {qCeil(titleLeft() + textSize(text(), titleStyle).width() + sidePadding), rowHeight};
}

void MenuRow::enterEvent(QEnterEvent *event)
{
    QAbstractButton::enterEvent(event);
    if (isEnabled())
        setHighlighted(true);
}

void MenuRow::leaveEvent(QEvent *event)
{
    QAbstractButton::leaveEvent(event);
    setHighlighted(false);
}

/// The menu reads the keyboard for all of its rows.
void MenuRow::keyPressEvent(QKeyEvent *event)
{
    event->ignore();
}

void MenuRow::keyReleaseEvent(QKeyEvent *event)
{
    event->ignore();
}

void MenuRow::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (isHighlighted())
        painter.fillPath(continuousRoundedRect(rect(), cornerRadius), m_look.highlight);
    const QColor color = isEnabled() ? Theme::primaryText : Theme::tertiaryText;
    const QSizeF mark = m_look.symbols.size(m_mark, markSize);
    m_look.symbols.draw(painter, {sidePadding, (height() - mark.height()) / 2}, m_mark, markSize, color);
    const QString title = elided(text(), titleStyle, width() - titleLeft() - sidePadding);
    const qreal y = (height() - textSize(title, titleStyle).height()) / 2;
    drawText(painter, {titleLeft(), y}, title, titleStyle, color);
}

} // namespace moorline
