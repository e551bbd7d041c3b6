#include "files/StackParts.h"

#include "theme/Symbols.h"
#include "theme/Text.h"
#include "theme/Theme.h"

#include <QPainter>
#include <QVBoxLayout>
#include <QtMath>
#include <algorithm>

namespace moorline {

namespace {

constexpr int listWidth = 236;
constexpr int greatestListHeight = 320;

constexpr qreal symbolSize = 11;
constexpr qreal symbolGap = 6;
constexpr TextStyle buttonStyle{.size = 12};
constexpr int lineWidth = 1;

} // namespace

StackMessage::StackMessage(const QString &text, qreal size, QWidget *parent)
    : QWidget(parent)
    , m_lines(text.split(u'\n'))
    , m_size(size)
{
    setAccessibleName(text);
}

QSize StackMessage::sizeHint() const
{
    QSizeF size(listWidth, 0);
    for (const QString &line : m_lines) {
        const QSizeF one = textSize(line, {.size = m_size});
        size = {std::max(size.width(), one.width()), size.height() + one.height()};
    }
    return {qCeil(size.width()), qCeil(size.height())};
}

void StackMessage::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    qreal y = 0;
    for (const QString &line : m_lines) {
        drawText(painter, {0, y}, line, {.size = m_size}, Theme::secondaryText);
        y += textSize(line, {.size = m_size}).height();
    }
}

StackList::StackList(QWidget *parent)
    : QScrollArea(parent)
{
    auto *content = new QWidget;
    m_rows = new QVBoxLayout(content);
    m_rows->setContentsMargins(0, 0, 0, 0);
    m_rows->setSpacing(0);
    setWidget(content);
    setWidgetResizable(true);
    setFrameStyle(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    // The popover's own ground shows through.
    viewport()->setAutoFillBackground(false);
    content->setAutoFillBackground(false);
}

void StackList::append(QWidget *row)
{
    m_rows->addWidget(row);
}

QSize StackList::sizeHint() const
{
    return {listWidth, std::min(m_rows->sizeHint().height(), greatestListHeight)};
}

QSize StackLine::sizeHint() const
{
    return {0, lineWidth};
}

void StackLine::paintEvent(QPaintEvent *)
{
    QPainter(this).fillRect(rect(), Theme::divider);
}

StackButton::StackButton(const Symbols &symbols, QString symbol, const QString &text, QWidget *parent)
    : QAbstractButton(parent)
    , m_symbols(symbols)
    , m_symbol(std::move(symbol))
{
    setText(text);
    setFocusPolicy(Qt::StrongFocus);
}

QSize StackButton::sizeHint() const
{
    const QSizeF symbol = m_symbols.size(m_symbol, symbolSize);
    const QSizeF words = textSize(text(), buttonStyle);
    return {qCeil(symbol.width() + symbolGap + words.width()), qCeil(std::max(symbol.height(), words.height()))};
}

void StackButton::enterEvent(QEnterEvent *event)
{
    QAbstractButton::enterEvent(event);
    update();
}

void StackButton::leaveEvent(QEvent *event)
{
    QAbstractButton::leaveEvent(event);
    update();
}

void StackButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const bool isMeant = underMouse() || hasFocus();
    const QColor color = isMeant ? Theme::primaryText : Theme::secondaryText;
    const QSizeF symbol = m_symbols.size(m_symbol, symbolSize);
    m_symbols.draw(painter, {0, (height() - symbol.height()) / 2}, m_symbol, symbolSize, color);
    const qreal top = (height() - textSize(text(), buttonStyle).height()) / 2;
    drawText(painter, {symbol.width() + symbolGap, top}, text(), buttonStyle, color);
}

} // namespace moorline
