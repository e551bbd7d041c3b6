#include "platform/linux/docks/DesktopPreferences.h"

#include "freedesktop/EntryCatalogue.h"
#include "platform/linux/docks/DesktopDocks.h"

namespace moorline {

namespace {

class DockDomain final : public PreferenceDomain {
public:
    DockDomain(const DesktopDocks &docks, const DesktopPreferences::Entries &entries, const PinnedApps &pinned)
        : m_docks(docks)
        , m_entries(entries)
        , m_pinned(pinned)
    {
    }

    [[nodiscard]] QVariant value(const QString &key) const override
    {
        if (key == QLatin1StringView("persistent-apps"))
            return tiles();
        return dockPreference(m_docks.concerningDock(), key);
    }

private:
    [[nodiscard]] QVariantList tiles() const
    {
        const auto entries = m_entries();
        QVariantList tiles;
        const QList<DockPin> pins = m_pinned.pins();
        for (const DockPin &pin : pins)
            tiles.append(dockTile(pin, *entries));
        return tiles;
    }

    const DesktopDocks &m_docks;
    const DesktopPreferences::Entries &m_entries;
    const PinnedApps &m_pinned;
};

} // namespace

DesktopPreferences::DesktopPreferences(const DesktopDocks &docks, Entries entries, const QStringList &desktopNames)
    : m_docks(docks)
    , m_entries(std::move(entries))
    , m_pinned(docks, desktopNames)
{
}

std::unique_ptr<PreferenceDomain> DesktopPreferences::open(const QString &domain) const
{
    if (domain != QLatin1StringView("com.apple.dock"))
        return nullptr;
    return std::make_unique<DockDomain>(m_docks, m_entries, m_pinned);
}

} // namespace moorline
