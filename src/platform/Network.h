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

Q_SIGNALS:
    /// There is a way again after there was none. What answers names may follow a moment later.
    void becameReachable();
};

} // namespace moorline
