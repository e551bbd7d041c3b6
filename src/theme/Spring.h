#pragma once

namespace moorline {

/// A damped spring that is let go at 0 and comes to rest at 1: the easing of everything that moves.
struct Spring {
    /// The period of the undamped oscillation, in seconds; roughly how long the motion takes.
    double response = 0.3;
    /// 1 comes to rest without overshooting, less swings past, more creeps.
    double damping = 1;

    /// Where the spring is `seconds` after it was let go with `initialVelocity` (in units of the distance per second).
    [[nodiscard]] double valueAt(double seconds, double initialVelocity = 0) const;
    /// When no more than this share of the way is left, and it never will be again, let go at rest.
    [[nodiscard]] double settlingSeconds(double share) const;
    /// Radians per second.
    [[nodiscard]] double angularFrequency() const;
};

} // namespace moorline
