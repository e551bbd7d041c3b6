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

UserTime::UserTime(XConnection &connection, const Clock &clock)
    : m_connection(connection)
    , m_clock(clock)
{
    QCoreApplication::instance()->installEventFilter(this);
}

bool UserTime::eventFilter(QObject *watched, QEvent *event)
{
    if (isDeed(event->type())) {
        // Events that the program makes itself carry none.
        if (const quint64 time = static_cast<const QInputEvent *>(event)->timestamp(); time != 0)
            note(static_cast<quint32>(time));
    } else if (event->type() == QEvent::Drop) {
        // What is let go here was led by another program's events, and Qt does not tell when.
        note(m_connection.serverTime());
    }
    return QObject::eventFilter(watched, event);
}

void UserTime::note(quint32 time)
{
    m_last = time;
    m_heard = m_clock.uptime();
}

std::optional<UserTime::Deed> UserTime::last() const
{
    return m_last == 0 ? std::nullopt : std::optional(Deed{.time = m_last, .age = m_clock.uptime() - m_heard});
}

} // namespace moorline
