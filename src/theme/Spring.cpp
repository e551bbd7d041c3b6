#include "theme/Spring.h"

#include <cmath>
#include <numbers>

namespace moorline {

namespace {

/// So close to critical damping the other two forms lose their digits to cancellation.
constexpr double criticalBand = 1e-6;

struct Motion {
    double frequency;
    double damping;
    double initialVelocity;
};

// Each of the three answers how far the spring still is from its rest, starting at -1.

double criticallyDamped(const Motion &motion, double t)
{
    return (-1 + (motion.initialVelocity - motion.frequency) * t) * std::exp(-motion.frequency * t);
}

double underdamped(const Motion &motion, double t)
{
    const double decay = motion.damping * motion.frequency;
    const double damped = motion.frequency * std::sqrt(1 - motion.damping * motion.damping);
    const double sine = (motion.initialVelocity - decay) / damped;
    return std::exp(-decay * t) * (sine * std::sin(damped * t) - std::cos(damped * t));
}

double overdamped(const Motion &motion, double t)
{
    const double spread = std::sqrt(motion.damping * motion.damping - 1);
    const double slow = motion.frequency * (spread - motion.damping);
    const double fast = -motion.frequency * (spread + motion.damping);
    const double slowShare = (motion.initialVelocity + fast) / (slow - fast);
    return slowShare * std::exp(slow * t) - (1 + slowShare) * std::exp(fast * t);
}

double distanceFromRest(const Motion &motion, double t)
{
    if (std::abs(motion.damping - 1) < criticalBand)
        return criticallyDamped(motion, t);
    return motion.damping < 1 ? underdamped(motion, t) : overdamped(motion, t);
}

} // namespace

double Spring::valueAt(double seconds, double initialVelocity) const
{
    if (seconds <= 0)
        return 0;
    if (response <= 0)
        return 1;
    return 1 + distanceFromRest({angularFrequency(), damping, initialVelocity}, seconds);
}

double Spring::settlingSeconds(double share) const
{
    if (response <= 0)
        return 0;
    if (damping < 1 - criticalBand) {
        const double amplitude = 1 / std::sqrt(1 - damping * damping);
        return std::log(amplitude / share) / (damping * angularFrequency());
    }
    // It only comes nearer: in steps that are short beside the way.
    double seconds = response;
    while (1 - valueAt(seconds) > share)
        seconds += response / 20;
    return seconds;
}

double Spring::angularFrequency() const
{
    return 2 * std::numbers::pi / response;
}

} // namespace moorline
