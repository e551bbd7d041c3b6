#pragma once

#include <optional>

namespace moorline {

/// What the pointer over the panel leads to on a system where a window takes either every pointer event or none, and
/// where the toolkit follows a moving pointer only while the application is active, which a bar hardly ever is.
class PanelPointerRule final {
public:
    /// What there is to see of the pointer at one moment.
    struct Sight {
        /// In the part of the panel that takes the pointer.
        bool isInside = false;
        bool isPressed = false;
        bool isApplicationActive = false;
        /// The pointer moved, or the panel under it. False for a button that came up.
        bool hasMoved = true;
    };

    /// What is to be done, in this order.
    struct Answer {
        /// Whether the panel lets the pointer through to the windows below; absent where that stays as it is.
        std::optional<bool> letsThrough = std::nullopt;
        /// What the widgets are told.
        bool enters = false;
        bool moves = false;
        bool leaves = false;

        bool operator==(const Answer &) const = default;
    };

    [[nodiscard]] Answer see(const Sight &sight);

private:
    /// The widgets were told that the pointer came, and not yet that it went.
    bool m_widgetsKnow = false;
};

} // namespace moorline
