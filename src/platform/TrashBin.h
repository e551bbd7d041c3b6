#pragma once

#include <functional>

namespace moorline {

/// What the user threw away, wherever it lies.
class TrashBin {
public:
    /// Called once, from the event loop; never when the bin is gone by then.
    using Looked = std::function<void(bool isFull)>;

    TrashBin() = default;
    TrashBin(const TrashBin &) = delete;
    TrashBin &operator=(const TrashBin &) = delete;
    virtual ~TrashBin() = default;

    /// Tells whether anything lies in it; where nobody can tell, nothing does.
    virtual void look(Looked looked) = 0;
    /// Shows what lies in it, in a window of the file manager.
    virtual void open() = 0;
};

} // namespace moorline
