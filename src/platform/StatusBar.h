#pragma once

#include <QObject>

namespace moorline {

/// The place for the program's status item: macOS's menu bar, a desktop's tray.
class StatusBar : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

Q_SIGNALS:
    /// A status bar came, after the start or in place of another: items have to be installed anew.
    void becameAvailable();
};

} // namespace moorline
