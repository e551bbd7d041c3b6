// rejected: 'override' hides virtual member function
#include "platform/Pointer.h"

namespace moorline {

class PointerInPixels : public Pointer {
public:
    [[nodiscard]] QPointF location(double scale) const override;
};

} // namespace moorline
