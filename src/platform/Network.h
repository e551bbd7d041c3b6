#pragma once

#include <QObject>

namespace moorline {

/// The machine's way to the internet.
class Network : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

Q_SIGNALS:
    /// There is a way again after there was none. What answers names may follow a moment later.
    void becameReachable();
};

} // namespace moorline
