#pragma once

#include <QString>

namespace moorline {

/// The user's folders, as absolute paths. They need not exist.
class Directories {
public:
    virtual ~Directories() = default;

    /// Where each application keeps a folder of its own state.
    [[nodiscard]] virtual QString applicationSupport() const = 0;
    /// Where what comes from the net is put.
    [[nodiscard]] virtual QString downloads() const = 0;
    /// Where what was thrown away lies. Other volumes may have a folder of their own for it.
    [[nodiscard]] virtual QString trash() const = 0;
};

} // namespace moorline
