#import "platform/macos/MacPreferences.h"

#import "platform/macos/Conversions.h"

namespace moorline {

namespace {

class Suite final : public PreferenceDomain {
public:
    explicit Suite(NSUserDefaults *defaults)
        : m_defaults(defaults)
    {
    }

    [[nodiscard]] QVariant value(const QString &key) const override
    {
        return variantFrom([m_defaults objectForKey:toNSString(key)]);
    }

private:
    NSUserDefaults *const m_defaults;
};

} // namespace

std::unique_ptr<PreferenceDomain> MacPreferences::open(const QString &domain) const
{
    NSUserDefaults *defaults = [[NSUserDefaults alloc] initWithSuiteName:toNSString(domain)];
    if (!defaults)
        return nullptr;
    return std::make_unique<Suite>(defaults);
}

} // namespace moorline
