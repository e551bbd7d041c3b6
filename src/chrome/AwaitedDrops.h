#pragma once

#include "platform/ArrivingDrop.h"

#include <vector>

namespace moorline {

/// What was let go over an item, and did not arrive yet. What is still awaited when this goes is taken by nobody.
class AwaitedDrops final {
public:
    /// Takes what arrived, and answers what its source is told of it. This may go meanwhile.
    using Take = std::function<Qt::DropAction(const QMimeData &)>;

    /// Asks the source for the files. Where they do not come, it is told that nothing was taken.
    void await(const std::shared_ptr<DropTransfer> &transfer, Take take);
    void giveUp() { m_transfers.clear(); }

private:
    [[nodiscard]] std::shared_ptr<DropTransfer> remove(const DropTransfer *transfer);

    std::vector<std::shared_ptr<DropTransfer>> m_transfers;
};

} // namespace moorline
