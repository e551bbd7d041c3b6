#pragma once

#include <QDBusArgument>
#include <QDBusVariant>
#include <QImage>
#include <QVariantMap>

namespace moorline {

/// A picture as it goes over the bus, (iiay): its bytes are the pixels from the top left, each of them alpha, red,
/// green and blue, the colours not multiplied by the alpha.
/// freedesktop.org/wiki/Specifications/StatusNotifierItem/Icons
struct StatusNotifierPicture {
    qint32 width = 0;
    qint32 height = 0;
    QByteArray bytes;

    [[nodiscard]] static StatusNotifierPicture from(const QImage &image);
};

/// (sa(iiay)ss): name and pictures of an icon, a title, and a text in a simple markup.
/// freedesktop.org/wiki/Specifications/StatusNotifierItem/StatusNotifierItem
struct StatusNotifierToolTip {
    QString icon;
    QList<StatusNotifierPicture> pictures;
    QString title;
    QString text;
};

// What com.canonical.dbusmenu is made of, as written in its published interface, dbus-menu.xml of libdbusmenu.

/// (ia{sv}): an item and some of its properties.
struct MenuItemProperties {
    qint32 id = 0;
    QVariantMap properties;
};

/// (ias): an item and the names of properties that it has no more.
struct MenuItemLosses {
    qint32 id = 0;
    QStringList names;
};

/// (ia{sv}av): an item, its properties and those beneath it, each of which is another of these.
struct MenuItemLayout {
    qint32 id = 0;
    QVariantMap properties;
    QList<QDBusVariant> children;
};

/// (isvu): something that happened to an item, such as "clicked", with the time of it.
struct MenuItemEvent {
    qint32 id = 0;
    QString name;
    QDBusVariant data;
    quint32 time = 0;
};

QDBusArgument &operator<<(QDBusArgument &argument, const StatusNotifierPicture &picture);
const QDBusArgument &operator>>(const QDBusArgument &argument, StatusNotifierPicture &picture);
QDBusArgument &operator<<(QDBusArgument &argument, const StatusNotifierToolTip &tip);
const QDBusArgument &operator>>(const QDBusArgument &argument, StatusNotifierToolTip &tip);
QDBusArgument &operator<<(QDBusArgument &argument, const MenuItemProperties &item);
const QDBusArgument &operator>>(const QDBusArgument &argument, MenuItemProperties &item);
QDBusArgument &operator<<(QDBusArgument &argument, const MenuItemLosses &item);
const QDBusArgument &operator>>(const QDBusArgument &argument, MenuItemLosses &item);
QDBusArgument &operator<<(QDBusArgument &argument, const MenuItemLayout &item);
const QDBusArgument &operator>>(const QDBusArgument &argument, MenuItemLayout &item);
QDBusArgument &operator<<(QDBusArgument &argument, const MenuItemEvent &event);
const QDBusArgument &operator>>(const QDBusArgument &argument, MenuItemEvent &event);

/// To be called before any of these goes over a bus.
void registerStatusNotifierTypes();

} // namespace moorline

Q_DECLARE_METATYPE(moorline::StatusNotifierPicture)
Q_DECLARE_METATYPE(moorline::StatusNotifierToolTip)
Q_DECLARE_METATYPE(moorline::MenuItemProperties)
Q_DECLARE_METATYPE(moorline::MenuItemLosses)
Q_DECLARE_METATYPE(moorline::MenuItemLayout)
Q_DECLARE_METATYPE(moorline::MenuItemEvent)
