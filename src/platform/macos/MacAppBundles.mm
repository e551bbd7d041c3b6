#import "platform/macos/MacAppBundles.h"

#import "platform/macos/Conversions.h"

namespace moorline {

QString MacAppBundles::applicationExtension() const
{
    return QStringLiteral("app");
}

std::optional<BundleInfo> MacAppBundles::info(const QString &path) const
{
    NSBundle *bundle = [NSBundle bundleWithPath:toNSString(path)];
    if (!bundle)
        return std::nullopt;
    return BundleInfo{
        .identifier = textFrom(bundle.bundleIdentifier),
        .displayName = textFrom([bundle objectForInfoDictionaryKey:@"CFBundleDisplayName"]),
        .name = textFrom([bundle objectForInfoDictionaryKey:@"CFBundleName"]),
    };
}

} // namespace moorline
