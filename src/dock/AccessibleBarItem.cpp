#include "dock/AccessibleBarItem.h"

#include "chrome/BarItem.h"
#include "dock/AccessibleBarView.h"

#include <QGraphicsScene>
#include <QGraphicsView>

namespace moorline {

namespace {

/// The view that shows the item; null in a scene that none shows.
QGraphicsView *viewOf(const BarItem &item)
{
    const auto *scene = item.scene();
    return scene ? scene->views().value(0) : nullptr;
}

void tell(BarItem &item, QAccessible::Event change)
{
    QAccessibleEvent event(&item, change);
    QAccessible::updateAccessibility(&event);
}

BarItem *itemAround(const BarItem &item)
{
    for (QGraphicsItem *around = item.parentItem(); around; around = around->parentItem()) {
        if (auto *found = dynamic_cast<BarItem *>(around))
            return found;
    }
    return nullptr;
}

} // namespace

AccessibleBarItem::AccessibleBarItem(BarItem &item)
    : QAccessibleObject(&item)
{
    // There is one of this for each item, as long as the item lives.
    QObject::connect(&item, &BarItem::descriptionChanged, &item, [told = &item] {
        tell(*told, QAccessible::NameChanged);
        tell(*told, QAccessible::DescriptionChanged);
    });
    QObject::connect(&item, &BarItem::retired, &item, [told = &item] { tell(*told, QAccessible::ObjectDestroyed); });
}

BarItem &AccessibleBarItem::item() const
{
    return *static_cast<BarItem *>(object());
}

QAccessible::Role AccessibleBarItem::role() const
{
    const QAccessible::Role role = item().description().role;
    return role == QAccessible::NoRole ? QAccessible::Grouping : role;
}

QAccessible::State AccessibleBarItem::state() const
{
    const QGraphicsView *view = viewOf(item());
    QAccessible::State state;
    state.invisible = !view || !view->isVisible() || !item().isVisible();
    state.pressed = item().isPressed();
    state.hotTracked = item().isHovered();
    return state;
}

QString AccessibleBarItem::text(QAccessible::Text kind) const
{
    switch (kind) {
    case QAccessible::Name:
        return item().description().name;
    case QAccessible::Description:
        return item().description().state;
    case QAccessible::Help:
        return item().helpText();
    default:
        return {};
    }
}

QRect AccessibleBarItem::rect() const
{
    const QGraphicsView *view = viewOf(item());
    if (!view)
        return {};
    // What is painted: an item may take the pointer beyond that.
    const QRectF painted = item().mapRectToScene(item().rect());
    return accessibleRect(*view, view->viewportTransform().mapRect(painted));
}

QAccessibleInterface *AccessibleBarItem::parent() const
{
    if (BarItem *around = itemAround(item()))
        return QAccessible::queryAccessibleInterface(around);
    return QAccessible::queryAccessibleInterface(viewOf(item()));
}

int AccessibleBarItem::childCount() const
{
    return int(barItems(item()).size());
}

QAccessibleInterface *AccessibleBarItem::child(int index) const
{
    return QAccessible::queryAccessibleInterface(barItems(item()).value(index));
}

int AccessibleBarItem::indexOfChild(const QAccessibleInterface *child) const
{
    return int(barItems(item()).indexOf(qobject_cast<BarItem *>(child->object())));
}

QAccessibleInterface *AccessibleBarItem::childAt(int x, int y) const
{
    return childItemAt(barItems(item()), {x, y});
}

void *AccessibleBarItem::interface_cast(QAccessible::InterfaceType type)
{
    if (type == QAccessible::ActionInterface)
        return static_cast<QAccessibleActionInterface *>(this);
    return nullptr;
}

QStringList AccessibleBarItem::actionNames() const
{
    QStringList names;
    if (item().isTouchable())
        names.append(pressAction());
    if (item().hasMenu())
        names.append(showMenuAction());
    return names;
}

void AccessibleBarItem::doAction(const QString &name)
{
    if (name == pressAction())
        item().press();
    else if (name == showMenuAction())
        item().requestMenu();
}

QStringList AccessibleBarItem::keyBindingsForAction([[maybe_unused]] const QString &name) const
{
    return {};
}

QAccessibleInterface *childItemAt(const QList<BarItem *> &items, const QPoint &place)
{
    for (BarItem *item : items) {
        QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(item);
        if (accessible && accessible->rect().contains(place))
            return accessible;
    }
    return nullptr;
}

} // namespace moorline
