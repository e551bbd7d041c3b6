#pragma once

#include "chrome/AwaitedDrops.h"

#include <QAccessible>
#include <QGraphicsWidget>
#include <memory>
#include <optional>

QT_BEGIN_NAMESPACE
class QMimeData;
QT_END_NAMESPACE

namespace moorline {

class BarDrag;
class BarStage;

/// What stands in the bar and can be touched. Reads the pointer for everyone: a widget says what a click, a drag, a
/// drop or a request for a menu means, and what there is to tell about the item.
///
/// Whatever these lead to may take the item out of the bar, or destroy it.
///
/// What is dragged to another place in its row is draggable out of it, and its drag() is a call of carryReordered().
/// The items of the row, and the row for the gaps between, call setAcceptDrops(true), answer takesReorder() by what the
/// row knows to be dragged, and tell the row in reorderMoved(), which puts them in their new order at once. The dragged
/// one stays the same object meanwhile: moved, dimmed while isDragged(), and never hidden. dragEnded() puts the old
/// order back where the drag was cancelled; where it was let go, the Pointer port tells the place.
///
/// What takes files calls setAcceptDrops(true), answers takesDrop() by mayHoldFiles(), and reads them in drop() by
/// loadDroppedFileURLs(). What takesDrop() denies goes to the item below; what refusesDrop() or has no dropAnswer(), to
/// nobody. Where a source is slow to give what was dropped, drop() comes later; an item that retires meanwhile takes
/// nothing.
class BarItem : public QGraphicsWidget {
    Q_OBJECT
public:
    /// What the item is to someone who does not see it.
    struct Description {
        QAccessible::Role role = QAccessible::NoRole;
        QString name;
        /// What there is to say beside the name: that an application runs, what its badge reads.
        QString state;

        bool operator==(const Description &) const = default;
    };

    explicit BarItem(QGraphicsItem *parent = nullptr);
    ~BarItem() override;

    [[nodiscard]] const Description &description() const { return m_description; }
    /// What a pointer that rests on the item is told.
    [[nodiscard]] QString helpText() const { return toolTip(); }
    [[nodiscard]] bool isTouchable() const { return m_isTouchable; }
    [[nodiscard]] bool isHovered() const { return m_isHovered; }
    /// Whether a release would be a click now.
    [[nodiscard]] bool isPressed() const { return m_isPressed; }
    [[nodiscard]] bool isDragged() const { return m_isDragged; }
    /// Whether something that takesDrop() is held over it.
    [[nodiscard]] bool isDropHovered() const { return m_isDropHovered; }

    /// Does what a click does, where the item can be touched now.
    void press();
    /// Whether the item has a menu of its own: somebody listens to menuRequested().
    [[nodiscard]] bool hasMenu() const;
    /// Does what a right click does, where the item has a menu of its own.
    void requestMenu();
    /// Where this item, and every one inside it, is dragged. `stage` may be null; it outlives the item.
    void setStage(BarStage *stage) { m_stage = stage; }
    /// Takes the item out of the bar: hidden at once, and deleted once control is back in the event loop and no event
    /// or drag of its own, or of an item inside it, is under way.
    void retire();

Q_SIGNALS:
    /// The left button was pressed and let go on the item. The second press of a double click gives no other,
    /// unless the item is repeatable.
    void clicked();
    /// `place` is in the item's own coordinates. While nobody listens, the request goes to what lies below the item.
    void menuRequested(const QPointF &place);
    void hoveredChanged();
    void pressedChanged();
    void draggedChanged();
    void dropHoveredChanged();
    void helpTextChanged();
    void descriptionChanged();
    /// The item is out of the bar and about to be deleted.
    void retired();

protected:
    enum class DragKind {
        /// What is carried may leave the bar: drag() does it, in an event loop of its own.
        out,
        /// The item stays in the bar, and the button with it: dragTo() is told of each place the pointer comes to.
        inside,
    };
    enum class DragEnd { letGo, cancelled };

    void setDescription(const Description &description);
    void setHelpText(const QString &text);
    /// Until it is touchable, an item leaves the pointer to what lies below. Drops and menus do not depend on it.
    void setTouchable(bool touchable);
    /// Whether the second press of a double click is one more click, as for what may be done many times over. It is
    /// not, to begin with.
    void setRepeatable(bool isRepeatable) { m_isRepeatable = isRepeatable; }
    /// Absent, as it is to begin with, for what cannot be dragged.
    void setDraggable(std::optional<DragKind> kind) { m_dragKind = kind; }

    /// Whether a pointer that travelled so far from where it was pressed, in points of the screen, begins a drag: the
    /// system's own distance, unless the item knows better.
    [[nodiscard]] virtual bool isDrag(const QPointF &travel) const;
    /// Carries the item away from `place`, where it was pressed, and returns when the system's drag is over.
    virtual void drag(const QPointF &place);
    /// `place` is in the coordinates of the scene: the item itself may move along.
    virtual void dragTo(const QPointF &place);
    /// The end of every drag that draggedChanged() told of. No click follows one. It is cancelled by Escape, and when
    /// the item is hidden, retired or no longer touchable, wherever the button is let go after that: nothing in the bar
    /// takes what was cancelled.
    virtual void dragEnded(DragEnd end);

    /// Whether the item takes what is offered in these formats. Nothing is asked of the source before the drop: one
    /// that does not answer would stop the whole bar.
    [[nodiscard]] virtual bool takesDrop(const QStringList &formats) const;
    /// What the source is told that becomes of what it would do this much with; to ignore it where that is refused.
    /// Copied where it may be, so that the source keeps it, else moved.
    [[nodiscard]] virtual Qt::DropAction dropAnswer(Qt::DropActions possible) const;
    /// Whether the item refuses what it takesDrop(), and keeps it from the items below all the same: it is meant for
    /// this one alone. Where the source drops it although it was told so, drop() hears of it.
    [[nodiscard]] virtual bool refusesDrop() const;
    /// What the item refusesDrop() was let go over it all the same. Nothing came: who is told no does not drop.
    virtual void dropRefused();
    /// Takes what was dropped; false when it was none of the item's after all. All data are here by now.
    virtual bool drop(const QMimeData &data);
    /// Whether the item, which may be the dragged one, belongs to the row in which this id is put in another place.
    /// Neither takesDrop() nor drop() is asked of that.
    [[nodiscard]] virtual bool takesReorder(const QString &id) const;
    /// The pointer came to the item, or to another place on it, with something that takesReorder(). `place` is in the
    /// coordinates of the scene: the item itself may move away from below it.
    virtual void reorderMoved(const QString &id, const QPointF &place);

    bool sceneEvent(QEvent *event) override;
    void mousePressEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseMoveEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseReleaseEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseDoubleClickEvent(QGraphicsSceneMouseEvent *event) override;
    void ungrabMouseEvent(QEvent *event) override;
    void hoverEnterEvent(QGraphicsSceneHoverEvent *event) override;
    void hoverMoveEvent(QGraphicsSceneHoverEvent *event) override;
    void hoverLeaveEvent(QGraphicsSceneHoverEvent *event) override;
    void contextMenuEvent(QGraphicsSceneContextMenuEvent *event) override;
    void dragEnterEvent(QGraphicsSceneDragDropEvent *event) override;
    void dragMoveEvent(QGraphicsSceneDragDropEvent *event) override;
    void dragLeaveEvent(QGraphicsSceneDragDropEvent *event) override;
    void dropEvent(QGraphicsSceneDragDropEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    class Errand;
    struct Press {
        QPointF place;
        QPointF screenPlace;
        /// The second press of a double click can begin a drag and, of most items, no more.
        bool canClick;
    };
    struct Drag {
        DragKind kind;
        /// Null without a stage.
        std::shared_ptr<BarDrag> held;
        bool isCancelled = false;
    };

    void begin(const QGraphicsSceneMouseEvent &event, bool canClick);
    void cancelPress();
    void click();
    [[nodiscard]] bool isDraggedInside() const { return m_drag && m_drag->kind == DragKind::inside; }
    void beginDrag(DragKind kind, const QPointF &place);
    [[nodiscard]] std::shared_ptr<BarDrag> holdDrag();
    /// Ends it, or sees to it that it ends.
    void cancelDrag();
    void endDrag(DragEnd end);
    /// What the source is told that becomes of its own; to ignore what it offers where that is refused.
    [[nodiscard]] Qt::DropAction answerTo(const QGraphicsSceneDragDropEvent &offer) const;
    /// True when the item takes what is held over it.
    bool dropCame(QGraphicsSceneDragDropEvent &offer);
    /// True when what was let go is taken, or may be once it has arrived.
    bool takeDropped(const QMimeData &data, Qt::DropAction answer);
    [[nodiscard]] BarStage *effectiveStage() const;
    [[nodiscard]] bool isBusy() const;
    /// However deep inside what is no item itself.
    [[nodiscard]] static bool holdsBusyItem(const QGraphicsItem &around);
    void setState(bool &state, bool value, void (BarItem::*changed)());

    Description m_description;
    std::optional<Press> m_press;
    BarStage *m_stage = nullptr;
    std::optional<DragKind> m_dragKind;
    /// The one that is under way.
    std::optional<Drag> m_drag;
    AwaitedDrops m_awaitedDrops;
    /// Errands that are under way, one inside the other.
    int m_errands = 0;
    bool m_isTouchable = false;
    bool m_isRepeatable = false;
    bool m_isHovered = false;
    bool m_isPressed = false;
    bool m_isDragged = false;
    bool m_isDropHovered = false;
    /// What is held over it now is refused.
    bool m_isRefusing = false;
    bool m_isRetired = false;
};

/// The items of the bar that are shown directly within `parent`, and within whatever is none itself, from left to
/// right.
[[nodiscard]] QList<BarItem *> barItems(const QGraphicsItem &parent);

} // namespace moorline
