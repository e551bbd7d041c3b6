#pragma once

#include "platform/Preferences.h"

namespace moorline {

class DesktopDock;

/// The desktop's own dock in the words of "com.apple.dock", the only domain there is: "orientation", "autohide" and,
/// where the dock has it, "autohide-delay".
class DesktopPreferences final : public Preferences {
public:
    /// `dock` outlives every domain that is opened.
    explicit DesktopPreferences(const DesktopDock &dock);

    [[nodiscard]] std::unique_ptr<PreferenceDomain> open(const QString &domain) const override;

private:
    const DesktopDock &m_dock;
};

} // namespace moorline
