#include "chrome/MenuView.h"

#include "chrome/MenuRow.h"
#include "theme/DevicePixels.h"
#include "theme/Theme.h"

#include <QKeyEvent>
#include <QPainter>
#include <QVBoxLayout>
#include <algorithm>

namespace moorline {

namespace {

constexpr int padding = 5;

/// The line between two groups of commands.
class Separator final : public QWidget {
public:
    using QWidget::QWidget;

    [[nodiscard]] QSize sizeHint() const override { return {0, 9}; }

protected:
    void paintEvent(QPaintEvent *) override
    {
        constexpr qreal sidePadding = 10;
        QPainter painter(this);
        const QRectF line(sidePadding, height() / 2.0 - 0.5, width() - 2 * sidePadding, 1);
        painter.fillRect(snappedToPixels(painter, line), Theme::divider);
    }
};

bool hasMark(const MenuItem &item)
{
    return item.isChecked || !item.symbol.isEmpty();
}

} // namespace

MenuView::MenuView(PopupWindows &windows, const Symbols &symbols, const Menu &menu, const QColor &highlight)
    : BarPopup(windows, PopupKind::menu)
{
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(padding, padding, padding, padding);
    column->setSpacing(0);
    column->setSizeConstraint(QLayout::SetNoConstraint);
    const MenuRow::Look look{symbols, highlight, std::any_of(menu.begin(), menu.end(), hasMark)};
    for (const MenuItem &item : menu) {
        if (item.isSeparator()) {
            column->addWidget(new Separator(this));
            continue;
        }
        m_rows.append(new MenuRow(item, look, this));
        column->addWidget(m_rows.last());
        connect(m_rows.last(), &MenuRow::clicked, this, [this, action = item.action] { choose(action); });
    }
}

QSizeF MenuView::naturalSize() const
{
    return layout()->sizeHint();
}

void MenuView::choose(const std::function<void()> &action)
{
    // Both go with the menu.
    const std::function<void()> chosen = action;
    Q_EMIT dismissed();
    chosen();
}

MenuRow *MenuView::rowAt(const QPoint &place) const
{
    auto *row = qobject_cast<MenuRow *>(childAt(place));
    return row && row->isEnabled() ? row : nullptr;
}

void MenuView::hover(const QPoint &place)
{
    highlight(m_rows.indexOf(rowAt(place)));
}

void MenuView::chooseAt(const QPoint &place)
{
    if (MenuRow *row = rowAt(place))
        row->click();
}

qsizetype MenuView::highlighted() const
{
    return m_rows.indexOf(qobject_cast<MenuRow *>(focusWidget()));
}

qsizetype MenuView::selectable(qsizetype index, qsizetype step) const
{
    for (qsizetype tried = 0; tried < m_rows.size(); ++tried, index += step) {
        index = (index + m_rows.size()) % m_rows.size();
        if (m_rows[index]->isEnabled())
            return index;
    }
    return -1;
}

void MenuView::highlight(qsizetype index)
{
    if (const qsizetype old = highlighted(); old >= 0)
        m_rows[old]->setHighlighted(false);
    if (index >= 0)
        m_rows[index]->setHighlighted(true);
}

void MenuView::highlightByLetter(const QString &letter)
{
    const qsizetype first = highlighted() + 1;
    for (qsizetype i = 0; i < m_rows.size() && !letter.isEmpty(); ++i) {
        const qsizetype index = (first + i) % m_rows.size();
        if (m_rows[index]->isEnabled() && m_rows[index]->text().startsWith(letter, Qt::CaseInsensitive))
            return highlight(index);
    }
}

void MenuView::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Down:
        return highlight(selectable(highlighted() + 1, 1));
    case Qt::Key_Up:
        return highlight(selectable(highlighted() < 0 ? m_rows.size() - 1 : highlighted() - 1, -1));
    case Qt::Key_Home:
        return highlight(selectable(0, 1));
    case Qt::Key_End:
        return highlight(selectable(m_rows.size() - 1, -1));
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        if (highlighted() >= 0)
            m_rows[highlighted()]->click();
        return;
    case Qt::Key_Escape:
        return BarPopup::keyPressEvent(event);
    default:
        return highlightByLetter(event->text());
    }
}

} // namespace moorline
