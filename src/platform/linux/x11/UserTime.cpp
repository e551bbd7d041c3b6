#include "platform/linux/x11/UserTime.h"

#include "platform/linux/x11/XConnection.h"

#include <QCoreApplication>
#include <QInputEvent>

namespace moorline {

namespace {

/// What somebody did with a hand, and not what follows from a window that moves under the pointer.
bool isDeed(QEvent::Type type)
{
    switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::Wheel:
    case QEvent::TouchBegin:
    case QEvent::TouchEnd:
        return true;
    default:
        return false;
    }
}

} // namespace

UserTime::UserTime(XConnection &connection)
    : m_connection(connection)
{
    QCoreApplication::instance()->installEventFilter(this);
}

bool UserTime::eventFilter(QObject *watched, QEvent *event)
{
    if (isDeed(event->type())) {
        // Events that the program makes itself carry none.
        if (const quint64 time = static_cast<const QInputEvent *>(event)->timestamp(); time != 0)
            m_last = static_cast<quint32>(time);
    } else if (event->type() == QEvent::Drop) {
        // What is let go here was led by another program's events, and Qt does not tell when.
        m_last = m_connection.serverTime();
    }
    return QObject::eventFilter(watched, event);
}

} // namespace moorline
