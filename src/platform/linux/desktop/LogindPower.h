#pragma once

#include "platform/Power.h"

#include <QDBusServiceWatcher>

class QDBusMessage;

namespace moorline {

class SystemBus;

/// What logind tells of sleep, on the system bus. Silent where there is no such bus.
class LogindPower final : public Power {
    Q_OBJECT
public:
    explicit LogindPower(const SystemBus &bus);

private Q_SLOTS:
    void notePreparation(const QDBusMessage &message);

private:
    void listen(QDBusConnection bus);
    void findOwner(const QDBusConnection &bus);

    QDBusServiceWatcher m_watcher;
    /// The unique name of the program that is logind; empty while there is none.
    QString m_owner;
};

} // namespace moorline
