#pragma once

#include <QPointF>
#include <QtCore/qnamespace.h>

namespace moorline {

/// Where the pointer is and what is pressed, over whichever program's window.
class Pointer {
public:
    virtual ~Pointer() = default;

    /// In points, origin at the bottom left of the primary screen.
    [[nodiscard]] virtual QPointF location() const = 0;
    [[nodiscard]] virtual Qt::MouseButtons pressedButtons() const = 0;
};

} // namespace moorline
