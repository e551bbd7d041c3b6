#include "platform/linux/x11/X11PopupWindows.h"

#include "platform/linux/x11/KeyGrab.h"
#include "platform/linux/x11/X11Pointer.h"
#include "platform/linux/x11/X11PopupWindow.h"
#include "platform/linux/x11/XConnection.h"
#include "platform/qt/QtFileDrag.h"

#include <QDrag>

namespace moorline {

namespace {

/// The buttons after the third are the wheel, and what lies on the side of some mice.
constexpr std::uint32_t lastButton = 3;

/// XK_Escape of <X11/keysymdef.h>.
constexpr xcb_keysym_t escapeSymbol = 0xFF1B;

class PressWatch final : public PopupWindows::Handle {
public:
    PressWatch(XConnection &connection, PopupWindows::Pressed pressed)
        : m_connection(connection)
        , m_pressed(std::move(pressed))
    {
        // Queued, as the connection may learn of a press in the middle of another question.
        QObject::connect(
            &connection, &XConnection::buttonPressed, &m_context, [this](std::uint32_t button) { tell(button); },
            Qt::QueuedConnection);
        connection.setReportsPresses(true);
    }
    ~PressWatch() override { m_connection.setReportsPresses(false); }

private:
    void tell(std::uint32_t button) const
    {
        if (button > lastButton)
            return;
        // The watch may go with the call.
        const PopupWindows::Pressed pressed = m_pressed;
        pressed(X11Pointer(m_connection).location());
    }

    XConnection &m_connection;
    PopupWindows::Pressed m_pressed;
    QObject m_context;
};

class EscapeWatch final : public PopupWindows::Handle {
public:
    EscapeWatch(XConnection &connection, PopupWindows::Escaped escaped)
        : m_grab(connection, escapeSymbol)
        , m_escaped(std::move(escaped))
    {
        // Queued for the same reason.
        QObject::connect(
            &connection, &XConnection::keyPressed, &m_context, [this](xcb_keycode_t key) { tell(key); },
            Qt::QueuedConnection);
    }

private:
    void tell(xcb_keycode_t key) const
    {
        if (!m_grab.keys().contains(key))
            return;
        // The watch may go with the call.
        const PopupWindows::Escaped escaped = m_escaped;
        escaped();
    }

    KeyGrab m_grab;
    PopupWindows::Escaped m_escaped;
    QObject m_context;
};

} // namespace

X11PopupWindows::X11PopupWindows(XConnection &connection)
    : m_connection(connection)
{
    connect(&connection, &XConnection::compositionChanged, this, &PopupWindows::compositionChanged);
}

std::unique_ptr<PopupWindow> X11PopupWindows::adopt(QWidget &window, PopupKind kind)
{
    return std::make_unique<X11PopupWindow>(m_connection, window, kind);
}

bool X11PopupWindows::isComposited() const
{
    return m_connection.isComposited();
}

std::unique_ptr<PopupWindows::Handle> X11PopupWindows::openSystemMenu(
    [[maybe_unused]] const Menu &menu, [[maybe_unused]] MenuPlacement placement, [[maybe_unused]] Closed closed)
{
    return nullptr;
}

std::unique_ptr<PopupWindows::Handle> X11PopupWindows::watchPresses(Pressed pressed)
{
    return std::make_unique<PressWatch>(m_connection, std::move(pressed));
}

std::unique_ptr<PopupWindows::Handle> X11PopupWindows::watchEscape(Escaped escaped)
{
    return std::make_unique<EscapeWatch>(m_connection, std::move(escaped));
}

void X11PopupWindows::carryFile(
    [[maybe_unused]] QWidget &source, [[maybe_unused]] const QPointF &press, CarriedFile file, Ended ended)
{
    carryWithQt(std::move(file));
    ended();
}

void X11PopupWindows::cancelDrag()
{
    QDrag::cancel();
}

} // namespace moorline
