#pragma once

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
    /// `connection` outlives this.
    explicit DesktopSettingsClient(XConnection &connection);

    /// A setting that is a text. Absent where no manager has it.
    [[nodiscard]] std::optional<QByteArray> text(const QByteArray &name) const;

Q_SIGNALS:
    /// Any setting may be another now.
    void changed();

private:
    void findManager();
    void read();

    XConnection &m_connection;
    xcb_atom_t m_selection;
    xcb_atom_t m_property;
    xcb_window_t m_manager = XCB_WINDOW_NONE;
    QByteArray m_settings;
};

} // namespace moorline
