#include "apps/AppIconRow.h"

#include <algorithm>
#include <cmath>

namespace moorline {

namespace {

/// The bar's own reckoning of what its icons take counts on it.
constexpr qreal iconGap = 6;

} // namespace

AppIconRow::AppIconRow(AppShortcutButton::Context context, bool isPinned, QGraphicsItem *parent)
    : BarWidget(parent)
    , m_context(std::move(context))
    , m_isPinned(isPinned)
{
}

void AppIconRow::setIconSize(qreal size)
{
    if (size == m_iconSize)
        return;
    m_iconSize = size;
    for (AppShortcutButton *button : std::as_const(m_buttons))
        button->setIconSize(size);
    layOut();
}

AppShortcutButton *AppIconRow::takenOut(QList<AppShortcutButton *> &buttons, const QString &id)
{
    const auto found = std::find_if(
        buttons.begin(), buttons.end(), [&id](const AppShortcutButton *one) { return one->shortcut().id() == id; });
    if (found == buttons.end())
        return nullptr;
    AppShortcutButton *button = *found;
    buttons.erase(found);
    return button;
}

AppShortcutButton *AppIconRow::makeButton(const AppShortcut &shortcut)
{
    auto *button = new AppShortcutButton(m_context, shortcut, m_isPinned, this);
    connect(button, &QGraphicsObject::xChanged, this, &BarWidget::itemsMoved);
    welcome(*button);
    return button;
}

void AppIconRow::welcome(AppShortcutButton &)
{
}

void AppIconRow::show(const QList<AppShortcut> &shortcuts)
{
    const QList<AppShortcutButton *> before = std::exchange(m_buttons, {});
    QList<AppShortcutButton *> standing = before;
    for (const AppShortcut &shortcut : shortcuts) {
        AppShortcutButton *button = takenOut(standing, shortcut.id());
        if (button)
            button->setShortcut(shortcut);
        else
            button = makeButton(shortcut);
        button->setIconSize(m_iconSize);
        m_buttons.append(button);
    }
    for (AppShortcutButton *button : std::as_const(standing))
        button->retire();
    layOut();
    if (m_buttons != before)
        Q_EMIT itemsMoved();
}

qreal AppIconRow::placeOf(qsizetype index) const
{
    return qreal(index) * (AppShortcutButton::sizeFor(m_iconSize).width() + iconGap);
}

qsizetype AppIconRow::placeNear(const QPointF &point, qsizetype from) const
{
    // Where the icons lead, and not where they are on the way there.
    const auto reached = qsizetype(std::floor(point.x() / placeOf(1)));
    const qsizetype left = std::clamp<qsizetype>(reached, 0, m_buttons.size() - 1);
    const bool isBesideIt = point.x() >= placeOf(left) + m_iconSize && left < m_buttons.size() - 1;
    return isBesideIt && from > left ? left + 1 : left;
}

void AppIconRow::move(qsizetype from, qsizetype to)
{
    m_buttons.move(from, to);
    slide();
}

void AppIconRow::slide()
{
    for (qsizetype i = 0; i < m_buttons.size(); ++i)
        m_buttons[i]->slideTo(placeOf(i));
}

QRectF AppIconRow::boundingRect() const
{
    return rect().marginsAdded({0, AppShortcutButton::reach, 0, AppShortcutButton::reach});
}

QPainterPath AppIconRow::shape() const
{
    QPainterPath area;
    area.addRect(boundingRect());
    return area;
}

void AppIconRow::layOut()
{
    const QSizeF one = AppShortcutButton::sizeFor(m_iconSize);
    for (qsizetype i = 0; i < m_buttons.size(); ++i)
        m_buttons[i]->placeAt(placeOf(i));
    const auto count = qreal(m_buttons.size());
    setNaturalSize(
        m_buttons.isEmpty() ? QSizeF(0, 0) : QSizeF(count * (one.width() + iconGap) - iconGap, one.height()));
}

} // namespace moorline
