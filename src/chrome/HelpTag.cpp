#include "chrome/HelpTag.h"

#include "theme/Text.h"
#include "theme/Theme.h"

#include <QPainter>
#include <QtMath>
#include <algorithm>

namespace moorline {

namespace {

constexpr TextStyle textStyle{.size = 12};
constexpr QSizeF padding(10, 6);

} // namespace

HelpTag::HelpTag(PopupWindows &windows, Clock &clock)
    : BarPopup(windows, PopupKind::helpTag)
    , m_clock(clock)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
}

void HelpTag::setText(const QString &text)
{
    m_lines = text.split(u'\n');
    update();
    if (isVisible())
        restartTimer();
}

QSizeF HelpTag::naturalSize() const
{
    qreal width = 0;
    for (const QString &line : m_lines)
        width = std::max(width, textSize(line, textStyle).width());
    const qreal height = textSize({}, textStyle).height() * qreal(m_lines.size());
    return {std::ceil(width + 2 * padding.width()), std::ceil(height + 2 * padding.height())};
}

void HelpTag::paintEvent(QPaintEvent *event)
{
    BarPopup::paintEvent(event);
    QPainter painter(this);
    QPointF corner(padding.width(), padding.height());
    for (const QString &line : std::as_const(m_lines)) {
        drawText(painter, corner, line, textStyle, Theme::primaryText);
        corner.ry() += textSize({}, textStyle).height();
    }
}

void HelpTag::showEvent(QShowEvent *event)
{
    BarPopup::showEvent(event);
    restartTimer();
}

void HelpTag::hideEvent(QHideEvent *event)
{
    m_timer.reset();
    BarPopup::hideEvent(event);
}

void HelpTag::restartTimer()
{
    m_timer = m_clock.after(longestShow, [this] { orderOut(); });
}

} // namespace moorline
