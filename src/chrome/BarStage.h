#pragma once

#include "chrome/BarAnchor.h"
#include "chrome/BarHolds.h"
#include "platform/Menu.h"
#include "platform/PopupWindows.h"

#include <QColor>
#include <QPainterPath>
#include <vector>

namespace moorline {

class BarDrag;
class BarPopup;
class Clock;
class HelpTag;
class MenuView;
class PanelWindow;
class Pointer;
class PopoverContent;
class Screens;
class Symbols;

/// What the items of the bar ask of the bar around them: to open a menu or a popover above them, to tell about them,
/// and to keep the bar where it is. One menu or popover is open at a time, and no help tag beside it. It closes on
/// Escape, on a press elsewhere, when it has done its part, and when what it belongs to goes.
class BarStage final : public QObject {
    Q_OBJECT
public:
    /// What the stage is built on. Everything lent here outlives it.
    struct Context {
        PopupWindows &windows;
        const Screens &screens;
        const PanelWindow &panel;
        const Pointer &pointer;
        Clock &clock;
        const Symbols &symbols;
        BarHolds &holds;
    };
    explicit BarStage(Context context, QObject *parent = nullptr);
    ~BarStage() override;

    /// Opens a menu above its anchor, and closes what was open. Where the same anchor has something open already, that
    /// is all it does: whoever asks twice wants it gone.
    void openMenu(const BarAnchor &anchor, const Menu &menu);
    /// The same with a popover around `content`.
    void openPopover(const BarAnchor &anchor, std::unique_ptr<PopoverContent> content);
    void close();
    [[nodiscard]] bool isOpen() const { return m_popup || m_systemMenu; }
    [[nodiscard]] bool isOpenAt(const QGraphicsObject &item) const { return isOpen() && m_anchor->item == &item; }

    /// Shows what there is to tell about something of the bar. Nothing while a menu or a popover is open.
    void showHelp(const BarAnchor &anchor, const QString &text);
    void hideHelp();
    [[nodiscard]] const HelpTag &helpTag() const { return *m_help; }

    /// Keeps the bar where it is as long as the answer lives.
    [[nodiscard]] BarHolds::Token hold() { return m_context.holds.take(); }
    /// A drag begins; what closes meanwhile, and may be what began it, is deleted no sooner than it is over.
    [[nodiscard]] std::unique_ptr<BarDrag> beginDrag();
    /// The same with a drag of a file into other programs, as PopupWindows::carryFile() has it. The bar is free again
    /// when `ended` is called.
    void carryFile(QWidget &source, const QPointF &press, CarriedFile file, std::function<void()> ended);
    /// Whether what is still held over the bar is to be taken by nobody.
    [[nodiscard]] bool isDragCancelled() const;

    // For what holds the scene.

    /// Where the bar is drawn and takes input, in the coordinates of the scene, which are those of the panel.
    void setBody(const QPainterPath &body);
    /// The highlight of menus goes by it.
    void setAccent(const QColor &accent) { m_accent = accent; }
    /// Tells of a press on the bar before the scene learns of it. True when all it does is to close what was open, so
    /// that the scene shall not learn of it: a press on the anchor, or a left one while a menu is open.
    [[nodiscard]] bool takesPress(const QPointF &place, Qt::MouseButton button);
    /// Tells where the pointer is led that was pressed on the bar and is not let go yet: through the menu that the
    /// press opened, perhaps.
    void leadPointer(const QPointF &place);
    /// Tells where it was let go: over a row of that menu it chooses, and beside the menu it closes it, if the pointer
    /// had been there. Where it was pressed, it leaves the menu to a second press.
    void letPointerGo(const QPointF &place);
    /// Where the pointer is. Absent while a button is held, over whichever program's window.
    [[nodiscard]] std::optional<QPointF> restingPointer() const;

Q_SIGNALS:
    /// Something opened or closed.
    void openChanged();

private:
    /// Closes what was open. False where something is not to open now.
    [[nodiscard]] bool makeRoomFor(const BarAnchor &anchor);
    void begin(const BarAnchor &anchor);
    void open(const BarAnchor &anchor, std::unique_ptr<BarPopup> popup);
    /// False where the system has no menus of its own.
    [[nodiscard]] bool openSystemMenu(const BarAnchor &anchor, const Menu &menu);
    /// Null while no menu of the bar's own is open.
    [[nodiscard]] MenuView *menu() const;
    void followAnchor();
    /// In a turn of its own: a row that changes moves its items more than once.
    void placePopupSoon();
    void placePopup();
    void pressed(const QPointF &place);
    void dispose(std::unique_ptr<BarPopup> popup);
    void deleteClosed();
    void dragEnded();
    void watchEscape();
    void escapePressed();
    [[nodiscard]] QRectF onScreen(const QRectF &sceneRect) const;
    [[nodiscard]] QPointF inScene(const QPointF &place) const;
    /// A place of the scene in the coordinates of what is open.
    [[nodiscard]] QPoint inPopup(const QPointF &place) const;
    void place(BarPopup &popup, const BarAnchor &anchor) const;
    /// Absent while there is no screen.
    [[nodiscard]] std::optional<QRectF> frameFor(const QSizeF &size, const BarAnchor &anchor) const;

    Context m_context;
    QPainterPath m_body;
    QColor m_accent;
    std::unique_ptr<HelpTag> m_help;
    std::unique_ptr<BarPopup> m_popup;
    /// In its place where the system draws it.
    std::unique_ptr<PopupWindows::Handle> m_systemMenu;
    std::optional<BarAnchor> m_anchor;
    bool m_wasPointerInMenu = false;
    BarHolds::Token m_hold;
    std::unique_ptr<PopupWindows::Handle> m_presses;
    std::unique_ptr<PopupWindows::Handle> m_escape;
    QPointer<BarDrag> m_drag;
    std::vector<QMetaObject::Connection> m_anchorConnections;
    bool m_isPlacePending = false;
    /// Closed, and perhaps still in an event of their own. They delete themselves once it is over.
    std::vector<QPointer<BarPopup>> m_closed;
};

} // namespace moorline
