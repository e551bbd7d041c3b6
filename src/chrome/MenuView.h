#pragma once

#include "chrome/BarPopup.h"
#include "platform/Menu.h"

#include <QColor>

namespace moorline {

class MenuRow;
class Symbols;

/// A menu above the bar: chosen from by the mouse, or by the arrow keys, first letters and Return.
class MenuView final : public BarPopup {
    Q_OBJECT
public:
    MenuView(PopupWindows &windows, const Symbols &symbols, const Menu &menu, const QColor &highlight);

    [[nodiscard]] QSizeF naturalSize() const override;
    [[nodiscard]] bool wantsKeyboard() const override { return true; }
    /// Highlights what lies at a place of the menu, for a pointer whose button was pressed elsewhere.
    void hover(const QPoint &place);
    /// Chooses what lies there, if that can be chosen.
    void chooseAt(const QPoint &place);
    /// In order, without the separators.
    [[nodiscard]] const QList<MenuRow *> &rows() const { return m_rows; }

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void choose(const std::function<void()> &action);
    /// The nearest row that can be chosen, from `index` on in steps of 1 or -1, over both ends. -1 when there is none.
    [[nodiscard]] qsizetype selectable(qsizetype index, qsizetype step) const;
    /// Null where none that can be chosen lies.
    [[nodiscard]] MenuRow *rowAt(const QPoint &place) const;
    /// -1 when no row is highlighted.
    [[nodiscard]] qsizetype highlighted() const;
    void highlight(qsizetype index);
    void highlightByLetter(const QString &letter);

    QList<MenuRow *> m_rows;
};

} // namespace moorline
