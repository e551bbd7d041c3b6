#pragma once

#include "freedesktop/WindowFacts.h"

#include <QHash>
#include <QSet>
#include <chrono>

namespace moorline {

/// Keeps a window back as long as nobody knows whose it is, so that it is never shown as another application's. What
/// was told of once is never kept back again.
class NewWindows final {
public:
    /// How long at most: a process that is stuck may be known never.
    static constexpr std::chrono::milliseconds patience{500};

    /// Those of `windows` that can be told of, in their order, at a moment of a clock that never runs backwards. The
    /// dialogs of one that is kept back are kept back as well. `undecided` are those of which more may become known.
    [[nodiscard]] QList<WindowFacts> presentable(
        const QList<WindowFacts> &windows, const QSet<XWindowId> &undecided, std::chrono::milliseconds now);

    /// When the next window is kept back no more, whatever is known of it by then. Absent where none is.
    [[nodiscard]] std::optional<std::chrono::milliseconds> deadline() const;

private:
    /// Until when each is kept back.
    QHash<XWindowId, std::chrono::milliseconds> m_kept;
    QSet<XWindowId> m_told;
};

} // namespace moorline
