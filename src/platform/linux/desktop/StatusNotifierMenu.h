#pragma once

#include "platform/linux/bus/BusObject.h"
#include "platform/linux/desktop/NumberedMenu.h"
#include "platform/linux/desktop/StatusNotifierTypes.h"

namespace moorline {

/// A menu that another program shows for us: com.canonical.dbusmenu, as written in dbus-menu.xml of libdbusmenu and
/// spoken by the trays of the desktops. It is looked at anew whenever somebody is about to show it.
class StatusNotifierMenu final : public QObject {
    Q_OBJECT
public:
    /// Where it lies, for who is told of it.
    static const QString path;

    /// `bus` outlives it.
    StatusNotifierMenu(Bus &bus, std::function<Menu()> menu);

private:
    [[nodiscard]] BusInterface interface();
    [[nodiscard]] QList<BusMethod> readingMethods();
    [[nodiscard]] QList<BusMethod> eventMethods();

    /// Tells everybody what has changed. Whether anything has.
    bool refresh();
    [[nodiscard]] bool knows(int id) const { return id == NumberedMenu::root || m_menu.find(id); }
    /// Empty names stand for all of them.
    [[nodiscard]] QVariantMap properties(int id, const QStringList &names) const;
    [[nodiscard]] BusMethod::Reply layout(int parent, int depth, const QStringList &names);
    [[nodiscard]] BusMethod::Reply groupProperties(const QList<int> &ids, const QStringList &names);
    [[nodiscard]] BusMethod::Reply property(int id, const QString &name) const;
    [[nodiscard]] BusMethod::Reply events(const QList<MenuItemEvent> &events);
    [[nodiscard]] BusMethod::Reply aboutToShow(const QList<int> &ids);
    /// False where there is no such item.
    bool take(const MenuItemEvent &event);
    void choose(const std::function<void()> &action);
    void tellProperties(const NumberedMenu &before);

    std::function<Menu()> m_look;
    NumberedMenu m_menu;
    quint32 m_revision = 1;
    BusObject m_object;
};

} // namespace moorline
