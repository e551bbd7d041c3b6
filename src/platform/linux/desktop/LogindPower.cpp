#include "platform/linux/desktop/LogindPower.h"

#include "platform/linux/bus/BusAnswer.h"

namespace moorline {

LogindPower::LogindPower(Bus &systemBus, Clock &clock)
    : m_logind(systemBus, clock, QStringLiteral("org.freedesktop.login1"))
    , m_preparation(m_logind,
          {.path = QStringLiteral("/org/freedesktop/login1"),
              .interface = QStringLiteral("org.freedesktop.login1.Manager"),
              .member = QStringLiteral("PrepareForSleep")},
          [this](const QDBusMessage &message) { notePreparation(message); })
{
}

/// logind says "true" before and "false" after.
void LogindPower::notePreparation(const QDBusMessage &message)
{
    if (onlyValue<bool>(message) == false)
        Q_EMIT didWake();
}

} // namespace moorline
