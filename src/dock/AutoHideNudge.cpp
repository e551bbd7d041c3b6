#include "dock/AutoHideNudge.h"

#include "dock/NudgeButton.h"
#include "theme/Shapes.h"
#include "theme/Text.h"
#include "theme/Theme.h"

#include <QEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <utility>

namespace moorline {

namespace {

constexpr qreal padding = 12;
constexpr qreal spacing = 6;

const TextStyle textStyle{.size = 11};
const QColor textColor = QColor::fromRgbF(1, 1, 1, 0.7F);

} // namespace

AutoHideNudge::AutoHideNudge(const Symbols &symbols, QGraphicsItem *parent)
    : BarItem(parent)
    , m_text(tr("The macOS Dock is sitting underneath this one. Turn on auto-hide to clear the space."))
    , m_button(new NudgeButton(symbols, tr("Hide the macOS Dock"), this))
    , m_naturalWidth(naturalWidth())
{
    setHelpText(m_text);
    setDescription({.role = QAccessible::StaticText, .name = m_text, .state = {}});
    connect(m_button, &BarItem::clicked, this, &AutoHideNudge::accepted);
}

qreal AutoHideNudge::naturalWidth() const
{
    return std::ceil(
        padding + textSize(m_text, textStyle).width() + spacing + m_button->naturalSize().width() + padding);
}

QPainterPath AutoHideNudge::outline() const
{
    return continuousRoundedRect(QRectF(QPointF(0, 0), size()), size().height() / 2);
}

void AutoHideNudge::paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *)
{
    painter->fillPath(outline(), Theme::pillFill);
    const QString text = elided(m_text, textStyle, m_button->x() - spacing - padding);
    const qreal y = (size().height() - textSize(text, textStyle).height()) / 2;
    drawText(*painter, {padding, y}, text, textStyle, textColor);
}

void AutoHideNudge::changeEvent(QEvent *event)
{
    BarItem::changeEvent(event);
    if (event->type() != QEvent::FontChange || std::exchange(m_naturalWidth, naturalWidth()) == naturalWidth())
        return;
    placeButton();
    Q_EMIT naturalWidthChanged();
}

void AutoHideNudge::resizeEvent(QGraphicsSceneResizeEvent *)
{
    placeButton();
}

void AutoHideNudge::placeButton()
{
    const QSizeF natural = m_button->naturalSize();
    const qreal width = std::min(natural.width(), size().width() - 2 * padding);
    m_button->setGeometry(
        QRectF(size().width() - padding - width, (size().height() - natural.height()) / 2, width, natural.height()));
}

} // namespace moorline
