// rejected: allocating an object of abstract class type
#include "platform/Pointer.h"

#include <memory>

namespace moorline {

class HalfAPointer : public Pointer {
public:
    [[nodiscard]] QPointF location() const override { return {}; }
};

std::unique_ptr<Pointer> makePointer()
{
    return std::unique_ptr<Pointer>(new HalfAPointer);
}

} // namespace moorline
