#pragma once

#include "settings/Settings.h"

#include <QUrl>
#include <optional>

namespace moorline {

class AppBundles;

/// Knows applications by their bundles.
class AppLauncher {
public:
    explicit AppLauncher(const AppBundles &bundles);

    /// A shortcut for the application at a file URL. Absent when its extension is not exactly that of an application; a
    /// bundle that cannot be read still gives one, named after its file.
    [[nodiscard]] std::optional<AppShortcut> makeShortcut(const QUrl &url) const;

private:
    const AppBundles &m_bundles;
};

} // namespace moorline
