#include "platform/linux/desktop/StatusNotifierMenu.h"

#include <QGuiApplication>
#include <QPointer>

namespace moorline {

namespace {

const QString menuInterface = QStringLiteral("com.canonical.dbusmenu");
constexpr quint32 protocolVersion = 3;

QVariantMap interfaceProperties()
{
    return {
        {QStringLiteral("Version"), protocolVersion},
        {QStringLiteral("TextDirection"),
            QGuiApplication::isRightToLeft() ? QStringLiteral("rtl") : QStringLiteral("ltr")},
        {QStringLiteral("Status"), QStringLiteral("normal")},
        {QStringLiteral("IconThemePath"), QStringList()},
    };
}

BusError noSuchItem(int id)
{
    return BusError::invalidArguments(QStringLiteral("The menu has no item %1").arg(id));
}

QVariant wrapped(const QVariant &value)
{
    return QVariant::fromValue(QDBusVariant(value));
}

} // namespace

const QString StatusNotifierMenu::path = QStringLiteral("/MenuBar");

StatusNotifierMenu::StatusNotifierMenu(Bus &bus, std::function<Menu()> menu)
    : m_look(std::move(menu))
    , m_object(bus, path, {interface()})
{
    m_menu.replace(m_look());
}

BusInterface StatusNotifierMenu::interface()
{
    return {menuInterface, readingMethods() + eventMethods(), interfaceProperties};
}

QList<BusMethod> StatusNotifierMenu::readingMethods()
{
    const auto s = [](const char *text) { return QString::fromLatin1(text); };
    return {
        {s("GetLayout"), {s("i"), s("i"), s("as")}, {s("u"), s("(ia{sv}av)")},
            [this](const QVariantList &arguments) {
                return layout(arguments[0].toInt(), arguments[1].toInt(), arguments[2].toStringList());
            }},
        {s("GetGroupProperties"), {s("ai"), s("as")}, {s("a(ia{sv})")},
            [this](const QVariantList &arguments) {
                return groupProperties(qdbus_cast<QList<int>>(arguments[0]), arguments[1].toStringList());
            }},
        {s("GetProperty"), {s("i"), s("s")}, {s("v")},
            [this](const QVariantList &arguments) { return property(arguments[0].toInt(), arguments[1].toString()); }},
    };
}

QList<BusMethod> StatusNotifierMenu::eventMethods()
{
    const auto s = [](const char *text) { return QString::fromLatin1(text); };
    return {
        {s("Event"), {s("i"), s("s"), s("v"), s("u")}, {},
            [this](const QVariantList &arguments) -> BusMethod::Reply {
                if (!take({arguments[0].toInt(), arguments[1].toString(), {}, arguments[3].toUInt()}))
                    return noSuchItem(arguments[0].toInt());
                return QVariantList();
            }},
        {s("EventGroup"), {s("a(isvu)")}, {s("ai")},
            [this](const QVariantList &arguments) { return events(qdbus_cast<QList<MenuItemEvent>>(arguments[0])); }},
        {s("AboutToShow"), {s("i")}, {s("b")},
            [this](const QVariantList &arguments) -> BusMethod::Reply {
                if (!knows(arguments[0].toInt()))
                    return noSuchItem(arguments[0].toInt());
                return QVariantList{refresh()};
            }},
        {s("AboutToShowGroup"), {s("ai")}, {s("ai"), s("ai")},
            [this](const QVariantList &arguments) { return aboutToShow(qdbus_cast<QList<int>>(arguments[0])); }},
    };
}

bool StatusNotifierMenu::refresh()
{
    const NumberedMenu before = m_menu;
    switch (m_menu.replace(m_look())) {
    case NumberedMenu::Change::none:
        return false;
    case NumberedMenu::Change::properties:
        tellProperties(before);
        return true;
    case NumberedMenu::Change::layout:
        ++m_revision;
        m_object.emitSignal(menuInterface, QStringLiteral("LayoutUpdated"), {m_revision, NumberedMenu::root});
        return true;
    }
    return false;
}

void StatusNotifierMenu::tellProperties(const NumberedMenu &before)
{
    QList<MenuItemProperties> updated;
    QList<MenuItemLosses> lost;
    for (const NumberedMenu::Entry &entry : m_menu.entries()) {
        const QVariantMap then = menuProperties(before.find(entry.id)->item);
        const QVariantMap now = menuProperties(entry.item);
        MenuItemProperties changed{entry.id, {}};
        for (auto property = now.begin(); property != now.end(); ++property) {
            if (then.value(property.key()) != *property)
                changed.properties.insert(property.key(), *property);
        }
        MenuItemLosses losses{entry.id, {}};
        for (auto property = then.begin(); property != then.end(); ++property) {
            if (!now.contains(property.key()))
                losses.names.append(property.key());
        }
        if (!changed.properties.isEmpty())
            updated.append(changed);
        if (!losses.names.isEmpty())
            lost.append(losses);
    }
    m_object.emitSignal(menuInterface, QStringLiteral("ItemsPropertiesUpdated"),
        {QVariant::fromValue(updated), QVariant::fromValue(lost)});
}

QVariantMap StatusNotifierMenu::properties(int id, const QStringList &names) const
{
    const NumberedMenu::Entry *entry = m_menu.find(id);
    QVariantMap all = entry ? menuProperties(entry->item)
                            : QVariantMap{{QStringLiteral("children-display"), QStringLiteral("submenu")}};
    if (names.isEmpty())
        return all;
    QVariantMap some;
    for (const QString &name : names) {
        if (all.contains(name))
            some.insert(name, all.value(name));
    }
    return some;
}

BusMethod::Reply StatusNotifierMenu::layout(int parent, int depth, const QStringList &names)
{
    // Whoever asks for the whole is about to show it.
    if (parent == NumberedMenu::root)
        refresh();
    if (!knows(parent))
        return noSuchItem(parent);
    MenuItemLayout top{parent, properties(parent, names), {}};
    // Any number beneath zero stands for all there is, of which there is one floor.
    if (parent == NumberedMenu::root && depth != 0) {
        for (const NumberedMenu::Entry &entry : m_menu.entries()) {
            const MenuItemLayout child{entry.id, properties(entry.id, names), {}};
            top.children.append(QDBusVariant(QVariant::fromValue(child)));
        }
    }
    return QVariantList{m_revision, QVariant::fromValue(top)};
}

/// No numbers stand for all of them. Those that are not given are passed over.
BusMethod::Reply StatusNotifierMenu::groupProperties(const QList<int> &ids, const QStringList &names)
{
    QList<int> wanted = ids;
    if (wanted.isEmpty()) {
        wanted.append(NumberedMenu::root);
        for (const NumberedMenu::Entry &entry : m_menu.entries())
            wanted.append(entry.id);
    }
    QList<MenuItemProperties> all;
    for (const int id : wanted) {
        if (knows(id))
            all.append({id, properties(id, names)});
    }
    return QVariantList{QVariant::fromValue(all)};
}

BusMethod::Reply StatusNotifierMenu::property(int id, const QString &name) const
{
    if (!knows(id))
        return noSuchItem(id);
    const auto usual = menuPropertyDefault(name);
    if (!usual)
        return BusError::invalidArguments(QStringLiteral("No item has a property \"%1\"").arg(name));
    return QVariantList{wrapped(properties(id, {}).value(name, *usual))};
}

/// An error only where not one of them is known.
BusMethod::Reply StatusNotifierMenu::events(const QList<MenuItemEvent> &events)
{
    QList<int> unknown;
    for (const MenuItemEvent &event : events) {
        if (!take(event))
            unknown.append(event.id);
    }
    if (!events.isEmpty() && unknown.size() == events.size())
        return noSuchItem(unknown.first());
    return QVariantList{QVariant::fromValue(unknown)};
}

BusMethod::Reply StatusNotifierMenu::aboutToShow(const QList<int> &ids)
{
    QList<int> updated;
    QList<int> unknown;
    const bool hasChanged = refresh();
    for (const int id : ids) {
        if (!knows(id))
            unknown.append(id);
        else if (hasChanged && id == NumberedMenu::root)
            updated.append(id);
    }
    if (!ids.isEmpty() && unknown.size() == ids.size())
        return noSuchItem(unknown.first());
    return QVariantList{QVariant::fromValue(updated), QVariant::fromValue(unknown)};
}

bool StatusNotifierMenu::take(const MenuItemEvent &event)
{
    const NumberedMenu::Entry *entry = m_menu.find(event.id);
    if (event.id == NumberedMenu::root && event.name == QLatin1StringView("opened"))
        refresh();
    if (entry && entry->item.isEnabled() && event.name == QLatin1StringView("clicked"))
        choose(entry->item.action);
    return entry || event.id == NumberedMenu::root;
}

/// Once the caller has its answer: the action may end the program.
void StatusNotifierMenu::choose(const std::function<void()> &action)
{
    QMetaObject::invokeMethod(
        this,
        [this, action] {
            const QPointer<StatusNotifierMenu> alive(this);
            action();
            if (alive)
                refresh();
        },
        Qt::QueuedConnection);
}

} // namespace moorline
