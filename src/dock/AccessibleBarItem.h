#pragma once

#include <QAccessibleObject>

namespace moorline {

class BarItem;

/// An item of the bar as assistive technology sees it.
class AccessibleBarItem final : public QAccessibleObject, public QAccessibleActionInterface {
public:
    explicit AccessibleBarItem(BarItem &item);

    [[nodiscard]] QAccessible::Role role() const override;
    [[nodiscard]] QAccessible::State state() const override;
    [[nodiscard]] QString text(QAccessible::Text kind) const override;
    [[nodiscard]] QRect rect() const override;

    [[nodiscard]] QAccessibleInterface *parent() const override;
    [[nodiscard]] int childCount() const override;
    [[nodiscard]] QAccessibleInterface *child(int index) const override;
    [[nodiscard]] int indexOfChild(const QAccessibleInterface *child) const override;
    [[nodiscard]] QAccessibleInterface *childAt(int x, int y) const override;

    [[nodiscard]] void *interface_cast(QAccessible::InterfaceType type) override;
    /// To press it, while a click would do something, and to open its menu, where it has one of its own.
    [[nodiscard]] QStringList actionNames() const override;
    void doAction(const QString &name) override;
    [[nodiscard]] QStringList keyBindingsForAction(const QString &name) const override;

private:
    [[nodiscard]] BarItem &item() const;
};

/// The one of `items` that is shown at a place of the desktop, in the coordinates of assistive technology; null where
/// there is none.
[[nodiscard]] QAccessibleInterface *childItemAt(const QList<BarItem *> &items, const QPoint &place);

} // namespace moorline
