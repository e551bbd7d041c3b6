#include "platform/linux/desktop/StatusNotifierTypes.h"

#include <QDBusMetaType>
#include <QtEndian>

namespace moorline {

namespace {

template <typename... Fields>
QDBusArgument &write(QDBusArgument &argument, const Fields &...fields)
{
    argument.beginStructure();
    (argument << ... << fields);
    argument.endStructure();
    return argument;
}

template <typename... Fields>
const QDBusArgument &read(const QDBusArgument &argument, Fields &...fields)
{
    argument.beginStructure();
    (argument >> ... >> fields);
    argument.endStructure();
    return argument;
}

} // namespace

StatusNotifierPicture StatusNotifierPicture::from(const QImage &image)
{
    const QImage plain = image.convertToFormat(QImage::Format_ARGB32);
    StatusNotifierPicture picture{plain.width(), plain.height(), QByteArray(plain.sizeInBytes(), Qt::Uninitialized)};
    // A line of such an image is as long as its pixels.
    constexpr qsizetype bytesOfPixel = 4;
    qToBigEndian<quint32>(plain.constBits(), plain.sizeInBytes() / bytesOfPixel, picture.bytes.data());
    return picture;
}

QDBusArgument &operator<<(QDBusArgument &argument, const StatusNotifierPicture &picture)
{
    return write(argument, picture.width, picture.height, picture.bytes);
}

const QDBusArgument &operator>>(const QDBusArgument &argument, StatusNotifierPicture &picture)
{
    return read(argument, picture.width, picture.height, picture.bytes);
}

QDBusArgument &operator<<(QDBusArgument &argument, const StatusNotifierToolTip &tip)
{
    return write(argument, tip.icon, tip.pictures, tip.title, tip.text);
}

const QDBusArgument &operator>>(const QDBusArgument &argument, StatusNotifierToolTip &tip)
{
    return read(argument, tip.icon, tip.pictures, tip.title, tip.text);
}

QDBusArgument &operator<<(QDBusArgument &argument, const MenuItemProperties &item)
{
    return write(argument, item.id, item.properties);
}

const QDBusArgument &operator>>(const QDBusArgument &argument, MenuItemProperties &item)
{
    return read(argument, item.id, item.properties);
}

QDBusArgument &operator<<(QDBusArgument &argument, const MenuItemLosses &item)
{
    return write(argument, item.id, item.names);
}

const QDBusArgument &operator>>(const QDBusArgument &argument, MenuItemLosses &item)
{
    return read(argument, item.id, item.names);
}

QDBusArgument &operator<<(QDBusArgument &argument, const MenuItemLayout &item)
{
    return write(argument, item.id, item.properties, item.children);
}

const QDBusArgument &operator>>(const QDBusArgument &argument, MenuItemLayout &item)
{
    return read(argument, item.id, item.properties, item.children);
}

QDBusArgument &operator<<(QDBusArgument &argument, const MenuItemEvent &event)
{
    return write(argument, event.id, event.name, event.data, event.time);
}

const QDBusArgument &operator>>(const QDBusArgument &argument, MenuItemEvent &event)
{
    return read(argument, event.id, event.name, event.data, event.time);
}

void registerStatusNotifierTypes()
{
    qDBusRegisterMetaType<StatusNotifierPicture>();
    qDBusRegisterMetaType<QList<StatusNotifierPicture>>();
    qDBusRegisterMetaType<StatusNotifierToolTip>();
    qDBusRegisterMetaType<MenuItemProperties>();
    qDBusRegisterMetaType<QList<MenuItemProperties>>();
    qDBusRegisterMetaType<MenuItemLosses>();
    qDBusRegisterMetaType<QList<MenuItemLosses>>();
    qDBusRegisterMetaType<MenuItemLayout>();
    qDBusRegisterMetaType<MenuItemEvent>();
    qDBusRegisterMetaType<QList<MenuItemEvent>>();
    qDBusRegisterMetaType<QList<qint32>>();
    qDBusRegisterMetaType<QList<QDBusVariant>>();
    qDBusRegisterMetaType<QList<QStringList>>();
}

} // namespace moorline
