#include "apps/AppIdentity.h"

#include "apps/AppLauncher.h"
#include "platform/AppBundles.h"

namespace moorline {

namespace {

/// The file manager stands under its own name, which is not the same on every system.
QString shownName(const AppShortcut &shortcut, const BundleInfo &bundle)
{
    if (shortcut.bundleIdentifier != finderIdentifier)
        return shortcut.name;
    return bundle.displayName.value_or(bundle.name.value_or(shortcut.name));
}

} // namespace

AppIdentity identityOf(const AppShortcut &shortcut, const AppBundles &bundles)
{
    const auto path = bundles.locate(shortcut.path, shortcut.bundleIdentifier);
    const BundleInfo bundle = (path ? bundles.info(*path) : std::nullopt).value_or(BundleInfo());
    AppIdentity identity{.path = path.value_or(shortcut.path), .identifiers = {}, .name = shownName(shortcut, bundle)};
    for (const auto &identifier : {shortcut.bundleIdentifier, bundle.identifier}) {
        if (identifier && !identity.identifiers.contains(*identifier))
            identity.identifiers.append(*identifier);
    }
    return identity;
}

} // namespace moorline
