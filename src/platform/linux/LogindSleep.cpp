#include "platform/linux/LogindSleep.h"

#include <QDBusConnection>

namespace moorline {

LogindSleep::LogindSleep()
{
    // Named, so that nobody else on the bus is listened to.
    QDBusConnection::systemBus().connect(QStringLiteral("org.freedesktop.login1"),
        QStringLiteral("/org/freedesktop/login1"), QStringLiteral("org.freedesktop.login1.Manager"),
        QStringLiteral("PrepareForSleep"), this, SLOT(notePreparation(bool)));
}

/// logind says "true" before and "false" after.
void LogindSleep::notePreparation(bool isGoingToSleep)
{
    if (!isGoingToSleep)
        Q_EMIT didWake();
}

} // namespace moorline
