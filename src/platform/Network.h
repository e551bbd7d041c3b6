#pragma once

#include <QObject>

namespace moorline {

/// The machine's way to the internet.
class Network : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// Whether there is a way now. True when that cannot be told.
    [[nodiscard]] virtual bool isReachable() const = 0;

    /// From here on the next change is told.
    virtual void listen() = 0;
    /// Whether anything has changed since changed() came or this was last asked.
    [[nodiscard]] virtual bool takeChanges() = 0;

Q_SIGNALS:
    /// Something about the ways out is another now. Comes once after each listen() and no more, so that a storm of
    /// changes wakes nobody.
    void changed();
};

} // namespace moorline
