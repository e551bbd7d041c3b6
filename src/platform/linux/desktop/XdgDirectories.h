#pragma once

#include "platform/Directories.h"

namespace moorline {

/// The user's folders by the XDG base directory rules.
class XdgDirectories final : public Directories {
public:
    [[nodiscard]] QString applicationSupport() const override;
    [[nodiscard]] QString downloads() const override;
    /// What lies in the trash of the home; that of its volume, and no other.
    [[nodiscard]] QString trash() const override;
};

/// The trash of the home, as the Trash specification has it: with "files" in it, and "info".
[[nodiscard]] QString homeTrashPath();

/// Where the program keeps what is no choice of the user.
[[nodiscard]] QString userDefaultsPath();

} // namespace moorline
