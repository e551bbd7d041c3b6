#pragma once

#include "platform/Clock.h"
#include "platform/linux/bus/BusAnswer.h"
#include "support/Promise.h"

#include <QObject>

namespace moorline {

class Bus;

/// Calls a method on a bus. The answer comes to whoever awaits it, and is never waited for:
///
///     const BusAnswer answer = co_await ask(*this, m_bus, m_clock, question, 10s);
///
/// It is an error of org.freedesktop.DBus.Error when nothing comes within `limit` (NoReply), when the bus is not open
/// or ends meanwhile (Disconnected), and when `owner` ends meanwhile, within whose destructor whoever waits then goes
/// on. Whoever has nobody waiting for the answer sends with QDBusConnection::send.
[[nodiscard]] Promise<BusAnswer> ask(
    const QObject &owner, Bus &bus, Clock &clock, const QDBusMessage &question, std::chrono::milliseconds limit);

/// The question what a property holds, to be answered with BusAnswer::property().
[[nodiscard]] QDBusMessage propertyQuestion(
    const QString &service, const QString &path, const QString &interface, const QString &property);

} // namespace moorline
