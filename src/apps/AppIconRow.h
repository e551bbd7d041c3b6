#pragma once

#include "apps/AppShortcutButton.h"
#include "chrome/BarWidget.h"

namespace moorline {

/// Applications side by side, each as a button that stays the same object wherever it moves in the row.
class AppIconRow : public BarWidget {
    Q_OBJECT
public:
    AppIconRow(AppShortcutButton::Context context, bool isPinned, QGraphicsItem *parent);

    /// From left to right.
    [[nodiscard]] const QList<AppShortcutButton *> &buttons() const { return m_buttons; }
    [[nodiscard]] qreal iconSize() const { return m_iconSize; }
    void setIconSize(qreal size) override;

    /// Higher than what is painted, as its buttons are.
    [[nodiscard]] QRectF boundingRect() const override;
    [[nodiscard]] QPainterPath shape() const override;

protected:
    [[nodiscard]] const AppShortcutButton::Context &context() const { return m_context; }
    /// What the row shows from now on.
    void show(const QList<AppShortcut> &shortcuts);
    /// A button that is new in the row.
    virtual void welcome(AppShortcutButton &button);

    /// Which place an icon that stands at `from` takes when it is carried here, in the row's coordinates: the nearest
    /// one beside them all, and between two icons the one that it comes by first. There is at least one icon.
    [[nodiscard]] qsizetype placeNear(const QPointF &point, qsizetype from) const;
    /// Puts a button where another one is; those between move up.
    void move(qsizetype from, qsizetype to);
    /// The buttons slide to their places.
    void slide();

private:
    /// The button of this application, removed from `buttons`; null when there is none.
    [[nodiscard]] static AppShortcutButton *takenOut(QList<AppShortcutButton *> &buttons, const QString &id);
    [[nodiscard]] AppShortcutButton *makeButton(const AppShortcut &shortcut);
    [[nodiscard]] qreal placeOf(qsizetype index) const;
    void layOut();

    AppShortcutButton::Context m_context;
    bool m_isPinned;
    qreal m_iconSize = 46;
    QList<AppShortcutButton *> m_buttons;
};

} // namespace moorline
