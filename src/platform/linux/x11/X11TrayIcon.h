#pragma once

#include <QImage>
#include <QObject>
#include <functional>
#include <xcb/xcb.h>

namespace moorline {

class XConnection;

/// An icon in a tray of the older kind, which is the owner of a selection and takes other programs' windows in: System
/// Tray Protocol Specification 0.3 (specifications.freedesktop.org/systemtray-spec) over XEmbed 0.5
/// (specifications.freedesktop.org/xembed-spec). It is in the tray, and in any that comes later, as long as it lives.
class X11TrayIcon final : public QObject {
    Q_OBJECT
public:
    /// A square picture with sides of that many device pixels.
    using Picture = std::function<QImage(int side)>;

    /// `connection` outlives it.
    X11TrayIcon(XConnection &connection, const QString &name, Picture picture);
    ~X11TrayIcon() override;

Q_SIGNALS:
    /// By the left or the right mouse button.
    void pressed();
    void pointerEntered();
    void pointerLeft();

private:
    void dock();
    void undock();
    void createWindow(xcb_window_t tray);
    void describeWindow() const;
    void requestDock(xcb_window_t tray) const;
    void follow(const xcb_generic_event_t &event);
    void hear(const xcb_generic_event_t &event);
    void paint() const;
    void press(const xcb_button_press_event_t &event);

    XConnection &m_connection;
    QString m_name;
    Picture m_picture;
    xcb_atom_t m_selection;
    xcb_window_t m_window = XCB_WINDOW_NONE;
    xcb_colormap_t m_colors = XCB_NONE;
    std::uint8_t m_depth = 0;
    QSize m_size;
};

} // namespace moorline
