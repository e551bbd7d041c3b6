#include "chrome/MenuAccessibility.h"

#include "chrome/MenuRow.h"
#include "chrome/MenuView.h"

#include <QAccessibleWidget>

namespace moorline {

namespace {

class AccessibleMenuRow final : public QAccessibleWidget {
public:
    explicit AccessibleMenuRow(MenuRow &row)
        : QAccessibleWidget(&row, QAccessible::MenuItem)
    {
    }

    [[nodiscard]] QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Name ? row().text() : QAccessibleWidget::text(kind);
    }

    [[nodiscard]] QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.checkable = row().isCheckable();
        state.checked = row().isChecked();
        return state;
    }

    [[nodiscard]] QStringList actionNames() const override
    {
        return row().isEnabled() ? QStringList{pressAction()} : QStringList();
    }

    void doAction(const QString &name) override
    {
        if (name == pressAction())
            row().click();
    }

private:
    [[nodiscard]] MenuRow &row() const { return *static_cast<MenuRow *>(widget()); }
};

QAccessibleInterface *makeInterface(const QString &, QObject *object)
{
    if (auto *row = qobject_cast<MenuRow *>(object))
        return new AccessibleMenuRow(*row);
    if (auto *menu = qobject_cast<MenuView *>(object))
        return new QAccessibleWidget(menu, QAccessible::PopupMenu);
    return nullptr;
}

} // namespace

void nameMenusForAccessibility()
{
    // The same function is installed once only.
    QAccessible::installFactory(makeInterface);
}

} // namespace moorline
