#pragma once

#include "platform/AppBundles.h"

namespace moorline {

/// Desktop entries as application bundles. The identifier is the desktop file id without ".desktop".
class DesktopEntries final : public AppBundles {
public:
    [[nodiscard]] QString applicationExtension() const override;
    /// Absent unless `path` is a regular file of at most 1 MiB with an entry of type Application.
    [[nodiscard]] std::optional<BundleInfo> info(const QString &path) const override;
};

} // namespace moorline
