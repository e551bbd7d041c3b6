#pragma once

#include <QObject>

namespace moorline {

/// What the machine's power does to the session.
class Power : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

Q_SIGNALS:
    /// The machine woke from sleep.
    void didWake();
};

} // namespace moorline
