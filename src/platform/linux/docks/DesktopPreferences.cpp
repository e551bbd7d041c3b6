#include "platform/linux/docks/DesktopPreferences.h"

#include "platform/linux/docks/DesktopDocks.h"

namespace moorline {

namespace {

class DockDomain final : public PreferenceDomain {
public:
    explicit DockDomain(const DesktopDocks &docks)
        : m_docks(docks)
    {
    }

    [[nodiscard]] QVariant value(const QString &key) const override
    {
        return dockPreference(m_docks.concerningDock(), key);
    }

private:
    const DesktopDocks &m_docks;
};

} // namespace

DesktopPreferences::DesktopPreferences(const DesktopDocks &docks)
    : m_docks(docks)
{
}

std::unique_ptr<PreferenceDomain> DesktopPreferences::open(const QString &domain) const
{
    if (domain != QLatin1StringView("com.apple.dock"))
        return nullptr;
    return std::make_unique<DockDomain>(m_docks);
}

} // namespace moorline
