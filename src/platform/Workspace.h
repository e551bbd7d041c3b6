#pragma once

#include <QObject>

namespace moorline {

/// What goes on among the applications of this session.
class Workspace : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

Q_SIGNALS:
    /// Another space (virtual desktop) became the active one.
    void activeSpaceChanged();
    /// Another application came to the front.
    void applicationActivated();
};

} // namespace moorline
