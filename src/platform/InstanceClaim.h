#pragma once

namespace moorline {

/// The right to be the one bar of a display. It ends with this object, or with the process however it ends.
class InstanceClaim {
public:
    InstanceClaim() = default;
    InstanceClaim(const InstanceClaim &) = delete;
    InstanceClaim &operator=(const InstanceClaim &) = delete;
    virtual ~InstanceClaim() = default;

    /// False when another process holds it. True also when that cannot be told, and for who holds it already.
    [[nodiscard]] virtual bool take() = 0;
};

} // namespace moorline
