#pragma once

#include "platform/Pointer.h"

namespace moorline {

class MacPointer final : public Pointer {
public:
    [[nodiscard]] QPointF location() const override;
    [[nodiscard]] Qt::MouseButtons pressedButtons() const override;
};

} // namespace moorline
