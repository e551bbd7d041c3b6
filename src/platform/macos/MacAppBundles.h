#pragma once

#include "platform/AppBundles.h"

namespace moorline {

class MacAppBundles final : public AppBundles {
public:
    [[nodiscard]] QString applicationExtension() const override;
    [[nodiscard]] std::optional<BundleInfo> info(const QString &path) const override;
};

} // namespace moorline
