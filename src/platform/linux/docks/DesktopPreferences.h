#pragma once

#include "platform/Preferences.h"
#include "platform/linux/docks/DesktopDocks.h"
#include "platform/linux/docks/PinnedApps.h"

#include <functional>
#include <memory>

namespace moorline {

class EntryCatalogue;

/// The desktop's own dock in the words of "com.apple.dock", the only domain there is: "orientation", "autohide",
/// where the dock has it "autohide-delay", and "persistent-apps".
class DesktopPreferences final : public Preferences {
public:
    /// What is known of applications at the moment.
    using Entries = std::function<std::shared_ptr<const EntryCatalogue>()>;

    /// `docks` and this outlive every domain that is opened.
    DesktopPreferences(
        const DesktopDocks &docks, Entries entries, const QStringList &desktopNames = currentDesktopNames());

    [[nodiscard]] std::unique_ptr<PreferenceDomain> open(const QString &domain) const override;

private:
    const DesktopDocks &m_docks;
    Entries m_entries;
    PinnedApps m_pinned;
};

} // namespace moorline
