#pragma once

#include <QString>
#include <optional>

namespace moorline {

/// What an application bundle says of itself. A text it does not give is absent; an empty one is kept.
struct BundleInfo {
    std::optional<QString> identifier;
    std::optional<QString> displayName;
    std::optional<QString> name;
};

/// Application bundles: on macOS folders ending in "app", on Linux desktop entries.
class AppBundles {
public:
    virtual ~AppBundles() = default;

    /// The path extension of an application, without the dot.
    [[nodiscard]] virtual QString applicationExtension() const = 0;
    /// Absent when there is no readable bundle at `path`.
    [[nodiscard]] virtual std::optional<BundleInfo> info(const QString &path) const = 0;
};

} // namespace moorline
