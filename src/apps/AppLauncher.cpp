#include "apps/AppLauncher.h"

#include "platform/AppBundles.h"

#include <QFileInfo>

namespace moorline {

AppLauncher::AppLauncher(const AppBundles &bundles)
    : m_bundles(bundles)
{
}

std::optional<AppShortcut> AppLauncher::makeShortcut(const QUrl &url) const
{
    const QFileInfo file(url.adjusted(QUrl::StripTrailingSlash).toLocalFile());
    // A hidden file that is called ".app" has no extension.
    if (file.suffix() != m_bundles.applicationExtension() || file.completeBaseName().isEmpty())
        return std::nullopt;
    const BundleInfo bundle = m_bundles.info(file.filePath()).value_or(BundleInfo());
    const QString name = bundle.displayName.value_or(bundle.name.value_or(file.completeBaseName()));
    return AppShortcut{file.filePath(), bundle.identifier, name};
}

} // namespace moorline
