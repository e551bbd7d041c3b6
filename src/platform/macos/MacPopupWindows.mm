#import "platform/macos/MacPopupWindows.h"

#import "platform/macos/EventMonitor.h"
#import "platform/macos/MacFileDrag.h"
#import "platform/macos/MacPointer.h"
#import "platform/macos/MacPopupWindow.h"
#import "platform/macos/MoorlinePopUpMenu.h"

namespace moorline {

namespace {

constexpr NSEventMask presses = NSEventMaskLeftMouseDown | NSEventMaskRightMouseDown | NSEventMaskOtherMouseDown;
/// On every keyboard; kVK_Escape of Carbon's HIToolbox/Events.h.
constexpr unsigned short escapeKey = 53;

class OpenMenu final : public PopupWindows::Handle {
public:
    explicit OpenMenu(MoorlinePopUpMenu *menu)
        : m_menu(menu)
    {
    }
    ~OpenMenu() override { [m_menu cancel]; }

private:
    MoorlinePopUpMenu *const m_menu;
};

class PressWatch final : public PopupWindows::Handle {
public:
    explicit PressWatch(PopupWindows::Pressed pressed)
        : m_pressed(std::move(pressed))
        , m_monitor(presses, [this](NSEvent *) { tellSoon(); })
    {
    }

private:
    /// Not from within the monitor, which may go with the call.
    void tellSoon()
    {
        const QPointF place = MacPointer().location();
        QMetaObject::invokeMethod(
            &m_context, [pressed = m_pressed, place] { pressed(place); }, Qt::QueuedConnection);
    }

    PopupWindows::Pressed m_pressed;
    QObject m_context;
    EventMonitor m_monitor;
};

/// The other application sees the key, too: a monitor only looks on.
class EscapeWatch final : public PopupWindows::Handle {
public:
    explicit EscapeWatch(PopupWindows::Escaped escaped)
        : m_escaped(std::move(escaped))
        , m_monitor(NSEventMaskKeyDown, [this](NSEvent *event) {
            if (event.keyCode == escapeKey)
                tellSoon();
        })
    {
    }

private:
    void tellSoon()
    {
        QMetaObject::invokeMethod(
            &m_context, [escaped = m_escaped] { escaped(); }, Qt::QueuedConnection);
    }

    PopupWindows::Escaped m_escaped;
    QObject m_context;
    EventMonitor m_monitor;
};

} // namespace

std::unique_ptr<PopupWindow> MacPopupWindows::adopt(QWidget &window, PopupKind kind)
{
    return std::make_unique<MacPopupWindow>(window, kind);
}

std::unique_ptr<PopupWindows::Handle> MacPopupWindows::openSystemMenu(
    const Menu &menu, MenuPlacement placement, Closed closed)
{
    MoorlinePopUpMenu *native = [[MoorlinePopUpMenu alloc] initWithItems:menu
                                                               placement:std::move(placement)
                                                                  closed:std::move(closed)];
    [native openSoon];
    return std::make_unique<OpenMenu>(native);
}

std::unique_ptr<PopupWindows::Handle> MacPopupWindows::watchPresses(Pressed pressed)
{
    return std::make_unique<PressWatch>(std::move(pressed));
}

std::unique_ptr<PopupWindows::Handle> MacPopupWindows::watchEscape(Escaped escaped)
{
    return std::make_unique<EscapeWatch>(std::move(escaped));
}

void MacPopupWindows::carryFile(QWidget &source, const QPointF &press, CarriedFile file, Ended ended)
{
    carryWithSession(source, press, std::move(file), std::move(ended));
}

void MacPopupWindows::cancelDrag()
{
}

} // namespace moorline
