#include "platform/linux/docks/DesktopPreferences.h"

#include "platform/linux/docks/DesktopDock.h"

namespace moorline {

namespace {

QString orientationText(DesktopDock::Edge edge)
{
    switch (edge) {
    case DesktopDock::Edge::bottom:
        return QStringLiteral("bottom");
    case DesktopDock::Edge::left:
    // The domain has no word for the top. Any side edge says what counts: the dock is not at the bottom.
    case DesktopDock::Edge::top:
        return QStringLiteral("left");
    case DesktopDock::Edge::right:
        return QStringLiteral("right");
    }
    Q_UNREACHABLE();
}

class DockDomain final : public PreferenceDomain {
public:
    explicit DockDomain(const DesktopDock &dock)
        : m_dock(dock)
    {
    }

    [[nodiscard]] QVariant value(const QString &key) const override
    {
        const DesktopDock::State dock = m_dock.state();
        if (key == QLatin1StringView("orientation"))
            return orientationText(dock.edge);
        // Nothing at the top ever comes to where the bar is, so it need not make way.
        if (key == QLatin1StringView("autohide"))
            return dock.hides || dock.edge == DesktopDock::Edge::top;
        if (key == QLatin1StringView("autohide-delay") && dock.revealDelay)
            return *dock.revealDelay;
        return {};
    }

private:
    const DesktopDock &m_dock;
};

} // namespace

DesktopPreferences::DesktopPreferences(const DesktopDock &dock)
    : m_dock(dock)
{
}

std::unique_ptr<PreferenceDomain> DesktopPreferences::open(const QString &domain) const
{
    if (domain != QLatin1StringView("com.apple.dock"))
        return nullptr;
    return std::make_unique<DockDomain>(m_dock);
}

} // namespace moorline
