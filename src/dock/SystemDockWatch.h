#pragma once

#include "platform/Clock.h"

#include <QObject>
#include <optional>

namespace moorline {

class BarHolds;
class Pointer;
class Screens;
class SettingsStore;
class SystemDock;

/// Watches whether the desktop's own dock needs the bar's place: it does once the pointer has rested at the bottom edge
/// for the delay and the dock is showing, until the pointer is high above the edge. Only in the visibility mode for it.
class SystemDockWatch final : public QObject {
    Q_OBJECT
public:
    /// Everything lent here outlives the watch.
    struct Context {
        const SettingsStore &store;
        const SystemDock &systemDock;
        const Screens &screens;
        const Pointer &pointer;
        const BarHolds &holds;
        Clock &clock;
    };

    explicit SystemDockWatch(Context context, QObject *parent = nullptr);

    /// Begins anew, as the settings now say. In the other visibility mode the panel may be back at once.
    void restart();

    [[nodiscard]] bool keepsPanelAway() const { return m_isAway; }

Q_SIGNALS:
    /// The dock needs the place, or no longer does.
    void changed();

private:
    void look();
    void setAway(bool away);
    [[nodiscard]] bool hasRestedLongEnough();

    Context m_context;
    bool m_isAway = false;
    std::optional<std::chrono::milliseconds> m_edgeEnteredAt;
    std::unique_ptr<Clock::Timer> m_timer;
};

} // namespace moorline
