#pragma once

#include "platform/Menu.h"

#include <QAbstractButton>

namespace moorline {

class Symbols;

/// An item of a menu as it is drawn and clicked. The row with the keyboard is the highlighted one.
class MenuRow final : public QAbstractButton {
    Q_OBJECT
public:
    /// What all rows of one menu have in common.
    struct Look {
        const Symbols &symbols;
        QColor highlight;
        /// Whether the titles stand clear of a column with check marks and symbols.
        bool hasMarks = false;
    };

    MenuRow(const MenuItem &item, Look look, QWidget *parent);

    [[nodiscard]] bool isHighlighted() const { return window()->focusWidget() == this; }
    void setHighlighted(bool highlighted);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    [[nodiscard]] qreal titleLeft() const;

    Look m_look;
    QString m_mark;
};

} // namespace moorline
