#pragma once

#include "platform/Pointer.h"

namespace moorline {

class XConnection;

/// Asks the X server at every question. One is a tenth of a millisecond, and no event tells of the pointer over all
/// windows without waking the program for each of its moves.
class X11Pointer final : public Pointer {
public:
    explicit X11Pointer(const XConnection &connection);

    [[nodiscard]] QPointF location() const override;
    [[nodiscard]] Qt::MouseButtons pressedButtons() const override;

private:
    const XConnection &m_connection;
};

} // namespace moorline
