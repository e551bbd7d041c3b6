#pragma once

#include "settings/Settings.h"

namespace moorline {

class AppBundles;

/// What a shortcut stands for in this session: where its application is now, and what that says of itself. The record
/// of the shortcut stays as it was made.
struct AppIdentity {
    /// That of the shortcut while the application is gone.
    QString path;
    /// That of the shortcut, and what the application calls itself today.
    QStringList identifiers;
    /// To be shown.
    QString name;

    bool operator==(const AppIdentity &) const = default;
};

[[nodiscard]] AppIdentity identityOf(const AppShortcut &shortcut, const AppBundles &bundles);

} // namespace moorline
