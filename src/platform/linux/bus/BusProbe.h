#pragma once

#include "platform/linux/glib/GObjectPointer.h"

namespace moorline {

enum class BusKind { session, system };

/// Looks for a bus without Qt, which opens one connection at a time and, while one hangs, holds up all others and
/// whoever subscribes to a signal on them. To be asked on a thread of its own: it waits for the bus.
class BusProbe final {
public:
    explicit BusProbe(BusKind kind);

    /// Waits until the bus has answered. False where there is none, and after cancel().
    [[nodiscard]] bool answers();
    /// From any thread.
    void cancel() { g_cancellable_cancel(m_cancellable.get()); }

    /// The session's bus, as GLib shares it among all of a program's libraries, would end the program when it ends.
    /// From here on it does not. To be called when the bus has answered.
    void outliveSharedConnection();

private:
    BusKind m_kind;
    GObjectPointer<GCancellable> m_cancellable;
};

} // namespace moorline
