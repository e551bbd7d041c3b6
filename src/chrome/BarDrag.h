#pragma once

#include "chrome/BarHolds.h"

namespace moorline {

class Pointer;
class PopupWindows;

/// A drag of something that stands in the bar or above it, from its beginning until it is let go. As long as this
/// lives, the bar stays where it is, and Escape cancels the drag, whichever program has the keyboard.
class BarDrag final : public QObject {
    Q_OBJECT
public:
    /// `windows` and `pointer` outlive the drag.
    BarDrag(BarHolds::Token hold, PopupWindows &windows, const Pointer &pointer);

    /// Ends it, with nothing dropped. What is under way ends soon, or, where the system leaves no way to that, when the
    /// button is let go.
    void cancel();
    [[nodiscard]] bool isCancelled() const { return m_isCancelled; }
    /// To be asked once it is over: it ended in another way than by letting go.
    [[nodiscard]] bool wasCancelled() const;

Q_SIGNALS:
    void cancelled();

private:
    BarHolds::Token m_hold;
    PopupWindows &m_windows;
    const Pointer &m_pointer;
    bool m_isCancelled = false;
};

} // namespace moorline
