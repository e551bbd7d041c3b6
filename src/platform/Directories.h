#pragma once

#include <QString>

namespace moorline {

/// The user's folders, as absolute paths. They need not exist.
class Directories {
public:
    virtual ~Directories() = default;

    /// Where each application keeps a folder of its own state.
    [[nodiscard]] virtual QString applicationSupport() const = 0;
};

} // namespace moorline
