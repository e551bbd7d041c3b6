#pragma once

#include "platform/Clock.h"

#include <QByteArray>
#include <QObject>
#include <optional>
#include <xcb/xcb.h>

namespace moorline {

class XConnection;

/// What the desktop's settings manager tells every program on this screen (XSETTINGS). Managers come and go.
class DesktopSettingsClient final : public QObject {
    Q_OBJECT
public:
    /// For how long what a manager told last counts after it has gone. One that is started anew is back sooner, and the
    /// program does not show itself in another look and back.
    static constexpr std::chrono::seconds patience{2};

    /// Both outlive this.
    DesktopSettingsClient(XConnection &connection, Clock &clock);

    /// A setting that is a text. Absent where no manager has it.
    [[nodiscard]] std::optional<QByteArray> text(const QByteArray &name) const;

Q_SIGNALS:
    /// Any setting may be another now.
    void changed();

private:
    void findManager();
    void read();
    void take(const QByteArray &settings);

    XConnection &m_connection;
    Clock &m_clock;
    xcb_atom_t m_selection;
    xcb_atom_t m_property;
    xcb_window_t m_manager = XCB_WINDOW_NONE;
    QByteArray m_settings;
    /// Runs while nobody tells anything and what was told before still counts.
    std::unique_ptr<Clock::Timer> m_patience;
};

} // namespace moorline
