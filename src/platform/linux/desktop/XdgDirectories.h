#pragma once

#include "platform/Directories.h"

namespace moorline {

/// The user's folders by the XDG base directory rules.
class XdgDirectories final : public Directories {
public:
    [[nodiscard]] QString applicationSupport() const override;
};

/// Where the program keeps what is no choice of the user.
[[nodiscard]] QString userDefaultsPath();

} // namespace moorline
