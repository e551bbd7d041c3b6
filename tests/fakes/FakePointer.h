#pragma once

#include "platform/Pointer.h"

namespace moorline::test {

class FakePointer final : public Pointer {
public:
    [[nodiscard]] QPointF location() const override { return place; }
    [[nodiscard]] Qt::MouseButtons pressedButtons() const override { return buttons; }

    QPointF place{720, 450};
    Qt::MouseButtons buttons;
};

} // namespace moorline::test
