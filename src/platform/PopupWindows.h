#pragma once

#include "platform/Files.h"
#include "platform/Menu.h"

#include <QImage>
#include <QObject>
#include <QPointF>
#include <QRectF>
#include <QUrl>
#include <functional>
#include <memory>

QT_BEGIN_NAMESPACE
class QWidget;
QT_END_NAMESPACE

namespace moorline {

/// What a window above the bar is, for systems that have a word for it.
enum class PopupKind { menu, popover, helpTag };

/// The native half of one window above the bar: it floats above the panel on every space and is in no list of windows.
class PopupWindow {
public:
    PopupWindow() = default;
    virtual ~PopupWindow() = default;
    Q_DISABLE_COPY_MOVE(PopupWindow)

    /// In points, origin at the bottom left of the primary screen.
    virtual void setFrame(const QRectF &frame) = 0;
    /// Shows the window above the panel. The keyboard stays where it is.
    virtual void orderFront() = 0;
    /// Gives the keyboard to the window, which has to be shown.
    virtual void takeKeyboard() = 0;
    /// Hides the window. The keyboard goes back to the window it was taken from, unless somebody else took it since.
    virtual void orderOut() = 0;
};

/// A file that goes with the pointer, to be given to another program.
struct CarriedFile {
    QUrl url;
    /// Its middle is at the pointer. Null while there is none.
    QImage picture;
    /// What was prepared for it; perhaps null. Kept for as long as somebody may ask for it.
    std::unique_ptr<Files::DragOffer> offer;
};

/// What the system does for windows above the bar, and for drags out of it.
class PopupWindows : public QObject {
    Q_OBJECT
public:
    /// Something that lasts as long as this lives.
    class Handle {
    public:
        Handle() = default;
        virtual ~Handle() = default;
        Q_DISABLE_COPY_MOVE(Handle)
    };
    using Pressed = std::function<void(const QPointF &)>;
    using Escaped = std::function<void()>;
    using Closed = std::function<void()>;
    using Ended = std::function<void()>;
    /// Where a menu of this size has its top left corner. In points, origin at the bottom left of the primary screen.
    using MenuPlacement = std::function<QPointF(const QSizeF &)>;

    using QObject::QObject;

    /// Makes the native window of `window`, a top-level widget that was never shown and that outlives the answer.
    [[nodiscard]] virtual std::unique_ptr<PopupWindow> adopt(QWidget &window, PopupKind kind) = 0;

    /// Whether a window may be transparent in part, as round corners are.
    [[nodiscard]] virtual bool isComposited() const = 0;

    /// Opens a menu that the system draws and leads the pointer and the keys through, in a turn of the event loop of
    /// its own. When it has closed, or did not open at all, that is told, and then what was chosen is done. Neither
    /// happens once the handle is gone, which closes the menu. Null where the system has no such menus.
    [[nodiscard]] virtual std::unique_ptr<Handle> openSystemMenu(
        const Menu &menu, MenuPlacement placement, Closed closed) = 0;

    /// Tells of every press of a mouse button from now on, over whichever program's window, and where it was: in
    /// points, origin at the bottom left of the primary screen. The handle may go while it is told of one.
    [[nodiscard]] virtual std::unique_ptr<Handle> watchPresses(Pressed pressed) = 0;

    /// Tells of every press of Escape from now on, whichever program has the keyboard; where the system allows it, that
    /// program does not see the key, and sees every other. The handle may go while it is told of one. Null where there
    /// is no way to learn of it.
    [[nodiscard]] virtual std::unique_ptr<Handle> watchEscape(Escaped escaped) = 0;

    /// Offers a file to other programs, as a copy or a link and never to be moved, until the button is let go that was
    /// pressed over `source`, at `press` in its coordinates. May come back only then. `ended` is called once, in the
    /// end or later, also when the source has gone meanwhile.
    virtual void carryFile(QWidget &source, const QPointF &press, CarriedFile file, Ended ended) = 0;

    /// Makes the drag that is under way, where one is, end with nothing dropped. Nothing where the system does so on
    /// Escape by itself.
    virtual void cancelDrag() = 0;

Q_SIGNALS:
    void compositionChanged();
};

} // namespace moorline
