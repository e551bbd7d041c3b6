#include "chrome/HelpTag.h"

#include "theme/Shapes.h"
#include "theme/Text.h"
#include "theme/Theme.h"

#include <QGuiApplication>
#include <QPainter>
#include <QScreen>
#include <QtMath>
#include <algorithm>

namespace moorline {

namespace {

constexpr TextStyle textStyle{.size = 12};
constexpr QSizeF padding(10, 6);
constexpr qreal cornerRadius = 8;

QSize naturalSize(const QStringList &lines)
{
    qreal width = 0;
    for (const QString &line : lines)
        width = std::max(width, textSize(line, textStyle).width());
    const qreal height = textSize({}, textStyle).height() * qreal(lines.size());
    return {qCeil(width + 2 * padding.width()), qCeil(height + 2 * padding.height())};
}

int kept(int wanted, int lowest, int highest)
{
    return std::max(lowest, std::min(wanted, highest));
}

} // namespace

HelpTag::HelpTag(Clock &clock, QWidget *parent)
    : QWidget(parent, Qt::ToolTip)
    , m_clock(clock)
{
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
}

void HelpTag::showText(const QString &text, const QPoint &anchor)
{
    m_lines = text.split(u'\n');
    const QSize size = naturalSize(m_lines);
    QPoint corner = anchor - QPoint(size.width() / 2, size.height());
    if (const QScreen *screen = QGuiApplication::screenAt(anchor)) {
        const QRect room = screen->geometry();
        corner.setX(kept(corner.x(), room.left(), room.right() + 1 - size.width()));
        corner.setY(kept(corner.y(), room.top(), room.bottom() + 1 - size.height()));
    }
    setGeometry(QRect(corner, size));
    update();
    show();
    m_timer = m_clock.after(longestShow, [this] { hide(); });
}

void HelpTag::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const qreal inset = 0.5;
    const QRectF frame = QRectF(rect()).adjusted(inset, inset, -inset, -inset);
    painter.setPen(QPen(Theme::pillStroke, 1));
    painter.setBrush(Theme::pillFill);
    painter.drawPath(continuousRoundedRect(frame, cornerRadius));
    QPointF corner(padding.width(), padding.height());
    for (const QString &line : std::as_const(m_lines)) {
        drawText(painter, corner, line, textStyle, Theme::primaryText);
        corner.ry() += textSize({}, textStyle).height();
    }
}

void HelpTag::hideEvent(QHideEvent *event)
{
    m_timer.reset();
    QWidget::hideEvent(event);
}

} // namespace moorline
