#pragma once

#include "platform/linux/x11/XAtoms.h"
#include "platform/linux/x11/XProperty.h"
#include "platform/linux/x11/XReply.h"

#include <QObject>
#include <QSocketNotifier>
#include <deque>
#include <memory>
#include <xcb/xcb.h>

namespace moorline {

/// The program's own connection to the X server, beside the one that Qt draws through. It sees what happens on the root
/// window and to its children, and on any further window that was asked to be watched.
class XConnection final : public QObject {
    Q_OBJECT
public:
    /// Null when there is no X server at $DISPLAY, or it lacks the extensions of the last twenty years.
    [[nodiscard]] static std::unique_ptr<XConnection> open();

    [[nodiscard]] xcb_connection_t *native() const { return m_native.get(); }
    [[nodiscard]] xcb_window_t root() const { return m_screen->root; }
    /// How the root window's pixels look, and those of most others.
    [[nodiscard]] xcb_visualid_t rootVisual() const { return m_screen->root_visual; }
    /// The one that $DISPLAY names, by which selections are numbered.
    [[nodiscard]] int screenNumber() const { return m_screenNumber; }
    [[nodiscard]] xcb_atom_t atom(XAtom name) const { return m_atoms[name]; }
    /// Of a name that only one adapter uses. Waits for the server.
    [[nodiscard]] xcb_atom_t atom(const QByteArray &name) const;

    /// Asks for a property now, to be read later.
    [[nodiscard]] PendingProperty request(xcb_window_t window, XAtom name) const;
    [[nodiscard]] PendingProperty request(xcb_window_t window, xcb_atom_t name) const;
    /// Asks and reads at once, for a single question.
    [[nodiscard]] XProperty property(xcb_window_t window, XAtom name) const;

    /// Begins to report changes of the window's properties, place and shape. Harmless for a window that is gone.
    void watch(xcb_window_t window) const;

    /// The server's clock now, in the milliseconds that requests and events are stamped with. What came meanwhile is
    /// reported in a later turn: whoever asks is in the middle of something.
    [[nodiscard]] xcb_timestamp_t serverTime();

    /// Whether presses of mouse buttons over any window are reported. They are not, to begin with.
    void setReportsPresses(bool reports);

    /// Begins to report who owns the selection.
    void watchSelection(xcb_atom_t selection) const;
    /// XCB_WINDOW_NONE where nobody does. Waits for the server.
    [[nodiscard]] xcb_window_t selectionOwner(xcb_atom_t selection) const;

    /// Reports in the next turn what came while replies were waited for. The socket has nothing left to notify of then.
    void reportSoon();

    /// Whether a compositor blends windows, so that transparent ones look transparent.
    [[nodiscard]] bool isComposited() const { return m_isComposited; }
    /// Whether any output is lit. True where the server cannot tell.
    [[nodiscard]] bool hasMonitors() const;

Q_SIGNALS:
    void propertyChanged(xcb_window_t window, xcb_atom_t name);
    /// A window, whether child of the root or watched, came, went, moved, or changed its place in the stack.
    void structureChanged(const xcb_generic_event_t &event);
    void shapeChanged(xcb_window_t window);
    void monitorsChanged();
    void compositionChanged();
    /// `button` as the server counts them, the wheel's included.
    void buttonPressed(std::uint32_t button);
    /// Of one that is grabbed.
    void keyPressed(xcb_keycode_t key);
    /// Of one that is watched.
    void selectionOwnerChanged(xcb_atom_t selection);
    /// The owner of a selection, or who says to be it, answered the request of a window of this connection.
    void selectionAnswered(const xcb_selection_notify_event_t &answer);
    /// What only windows of this connection are told: they have to be painted, or the pointer is over them.
    void ownWindowTold(const xcb_generic_event_t &event);

private:
    struct Disconnecter {
        void operator()(xcb_connection_t *connection) const { xcb_disconnect(connection); }
    };
    using NativeConnection = std::unique_ptr<xcb_connection_t, Disconnecter>;
    using Event = XReply<xcb_generic_event_t>;
    struct FirstEvents {
        std::uint8_t shape = 0;
        std::uint8_t randr = 0;
        std::uint8_t fixes = 0;
    };

    XConnection(NativeConnection native, const xcb_screen_t *screen, int screenNumber, FirstEvents firstEvents);

    void watchRoot();
    void watchCompositor();
    void createOwnWindow();
    void readEvents();
    void dispatchQueuedEvents();
    [[nodiscard]] Event nextEvent();
    /// True when the event did no more than to tell the time.
    bool tookTime(const xcb_generic_event_t &event);
    void dispatch(const xcb_generic_event_t &event);
    void dispatchExtension(std::uint8_t type, const xcb_generic_event_t &event);
    void dispatchInput(const xcb_ge_generic_event_t &event);

    NativeConnection m_native;
    const xcb_screen_t *m_screen;
    int m_screenNumber;
    XAtoms m_atoms;
    FirstEvents m_firstEvents;
    xcb_atom_t m_compositorSelection = XCB_ATOM_NONE;
    bool m_isComposited = false;
    /// Zero where the server lacks the extension.
    std::uint8_t m_inputOpcode = 0;
    /// Never shown; its property changes tell the time.
    xcb_window_t m_ownWindow = XCB_WINDOW_NONE;
    xcb_timestamp_t m_serverTime = XCB_CURRENT_TIME;
    /// Came before what xcb holds.
    std::deque<Event> m_delayed;
    QSocketNotifier m_notifier;
};

} // namespace moorline
