#pragma once

#include <QObject>

namespace moorline {

/// What logind tells of sleep, on the system bus. Silent where there is no such bus.
class LogindSleep final : public QObject {
    Q_OBJECT
public:
    LogindSleep();

Q_SIGNALS:
    /// The machine woke from sleep.
    void didWake();

private Q_SLOTS:
    void notePreparation(bool isGoingToSleep);
};

} // namespace moorline
