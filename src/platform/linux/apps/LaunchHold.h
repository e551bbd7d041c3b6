#pragma once

#include "support/FileDescriptor.h"

#include <QList>
#include <chrono>
#include <memory>

namespace moorline {

/// Where processes that were born wait before they become the program that is started, one after the other, until they
/// are let go: what they start in their turn then belongs to wherever they were put meanwhile.
class LaunchHold final {
public:
    /// Null where the system has no pipe left. `limit` is how long a process waits at most, whatever becomes of this
    /// one.
    [[nodiscard]] static std::shared_ptr<LaunchHold> create(std::chrono::milliseconds limit);

    /// To be called in the new process, between fork and exec; makes only calls that may be made there.
    void wait() const;

    /// Readable when a process waits.
    [[nodiscard]] int descriptor() const { return m_reports.get(); }
    /// Those that came to wait since this was last asked.
    [[nodiscard]] QList<qint64> takeWaiting() const;
    void letGo() const;

private:
    LaunchHold() = default;

    std::chrono::milliseconds m_limit{};
    /// The numbers of those that wait, to be read here and written there.
    FileDescriptor m_reports;
    FileDescriptor m_reporter;
    /// A byte for each that may go on, the other way round.
    FileDescriptor m_gate;
    FileDescriptor m_opener;
};

} // namespace moorline
