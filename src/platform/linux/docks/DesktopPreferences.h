#pragma once

#include "platform/Preferences.h"

namespace moorline {

class DesktopDocks;

/// The desktop's own dock in the words of "com.apple.dock", the only domain there is: "orientation", "autohide" and,
/// where the dock has it, "autohide-delay".
class DesktopPreferences final : public Preferences {
public:
    /// `docks` outlive every domain that is opened.
    explicit DesktopPreferences(const DesktopDocks &docks);

    [[nodiscard]] std::unique_ptr<PreferenceDomain> open(const QString &domain) const override;

private:
    const DesktopDocks &m_docks;
};

} // namespace moorline
