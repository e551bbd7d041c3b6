#pragma once

#include "chrome/BarItem.h"

#include <QDragEnterEvent>
#include <QGraphicsView>
#include <QMouseEvent>
#include <functional>
#include <utility>

namespace moorline::test {

/// An item of the bar that does what a test tells it.
class TrialItem final : public BarItem {
public:
    explicit TrialItem(const QRectF &place, QGraphicsItem *parent = nullptr)
        : BarItem(parent)
    {
        setGeometry(place);
        setTouchable(true);
        setAcceptDrops(true);
    }

    using BarItem::DragEnd;
    using BarItem::DragKind;
    using BarItem::setDescription;
    using BarItem::setDraggable;
    using BarItem::setHelpText;
    using BarItem::setRepeatable;
    using BarItem::setTouchable;

    std::function<void(const QPointF &)> onDrag;
    std::function<void(const QPointF &)> onDragTo;
    std::function<void(DragEnd)> onDragEnded;
    std::function<void()> onDrop;
    std::function<void(const QMimeData &)> onData;
    /// The formats it takes.
    QStringList taken;
    /// What it would take it refuses.
    bool isRefusing = false;
    int refusals = 0;
    /// It takes only what its source keeps.
    bool isKeeping = false;

protected:
    void drag(const QPointF &place) override
    {
        // It may destroy the item, and itself with it.
        const auto act = onDrag;
        if (act)
            act(place);
    }
    void dragTo(const QPointF &place) override
    {
        const auto act = onDragTo;
        if (act)
            act(place);
    }
    void dragEnded(DragEnd end) override
    {
        const auto act = onDragEnded;
        if (act)
            act(end);
    }
    [[nodiscard]] bool takesDrop(const QStringList &formats) const override
    {
        return std::any_of(taken.begin(), taken.end(), [&](const QString &format) { return formats.contains(format); });
    }
    [[nodiscard]] bool refusesDrop() const override { return isRefusing; }
    void dropRefused() override { ++refusals; }
    [[nodiscard]] Qt::DropAction dropAnswer(Qt::DropActions possible) const override
    {
        const Qt::DropAction answer = BarItem::dropAnswer(possible);
        return isKeeping && answer == Qt::MoveAction ? Qt::IgnoreAction : answer;
    }
    bool drop(const QMimeData &data) override
    {
        if (onData)
            onData(data);
        const auto act = onDrop;
        const bool takes = act || onData;
        if (act)
            act();
        return takes;
    }
};

/// A scene in a view, with a pointer of its own.
class Hand {
public:
    Hand()
        : m_view(&scene)
    {
        scene.setSceneRect(0, 0, 300, 100);
        m_view.setFrameStyle(QFrame::NoFrame);
        m_view.setAlignment(Qt::AlignLeft | Qt::AlignTop);
        m_view.viewport()->setMouseTracking(true);
        m_view.resize(300, 100);
        m_view.show();
    }

    void press(const QPoint &place, Qt::MouseButton button = Qt::LeftButton)
    {
        m_held |= button;
        send(QEvent::MouseButtonPress, place, button);
    }
    void release(const QPoint &place, Qt::MouseButton button = Qt::LeftButton)
    {
        m_held &= ~Qt::MouseButtons(button);
        send(QEvent::MouseButtonRelease, place, button);
    }
    void move(const QPoint &place) { send(QEvent::MouseMove, place, Qt::NoButton); }
    void click(const QPoint &place)
    {
        press(place);
        release(place);
    }
    /// As the system gives it: a click, and a second press that is none.
    void doubleClick(const QPoint &place)
    {
        click(place);
        m_held |= Qt::LeftButton;
        send(QEvent::MouseButtonDblClick, place, Qt::LeftButton);
        release(place);
    }
    /// True when something took the request.
    bool askForMenu(const QPoint &place)
    {
        QContextMenuEvent event(QContextMenuEvent::Mouse, place, global(place));
        QCoreApplication::sendEvent(m_view.viewport(), &event);
        return event.isAccepted();
    }

    /// What is dragged comes to `place`: tells what the source is told that would become of it there.
    Qt::DropAction dragOver(const QPoint &place, const QMimeData &data, Qt::DropActions possible)
    {
        if (!std::exchange(m_isDraggedOver, true)) {
            QDragEnterEvent enter(place, possible, &data, Qt::LeftButton, modifiers);
            QCoreApplication::sendEvent(m_view.viewport(), &enter);
        }
        QDragMoveEvent move(place, possible, &data, Qt::LeftButton, modifiers);
        QCoreApplication::sendEvent(m_view.viewport(), &move);
        m_answer = move.isAccepted() ? move.dropAction() : Qt::IgnoreAction;
        return m_answer;
    }
    /// It is let go there: tells what the source is told that became of it. What was refused to the last is not
    /// dropped.
    Qt::DropAction letGo(const QPoint &place, const QMimeData &data, Qt::DropActions possible)
    {
        if (m_answer == Qt::IgnoreAction) {
            dragAway();
            return Qt::IgnoreAction;
        }
        m_isDraggedOver = false;
        QDropEvent drop(place, possible, &data, Qt::NoButton, modifiers);
        QCoreApplication::sendEvent(m_view.viewport(), &drop);
        return drop.isAccepted() ? drop.dropAction() : Qt::IgnoreAction;
    }
    void dragAway()
    {
        m_isDraggedOver = false;
        QDragLeaveEvent leave;
        QCoreApplication::sendEvent(m_view.viewport(), &leave);
    }

    [[nodiscard]] QPoint global(const QPoint &place) const { return m_view.viewport()->mapToGlobal(place); }

    QGraphicsScene scene;
    Qt::KeyboardModifiers modifiers = Qt::NoModifier;

private:
    void send(QEvent::Type type, const QPoint &place, Qt::MouseButton button)
    {
        QMouseEvent event(type, place, global(place), button, m_held, modifiers);
        QCoreApplication::sendEvent(m_view.viewport(), &event);
    }

    QGraphicsView m_view;
    bool m_isDraggedOver = false;
    Qt::DropAction m_answer = Qt::IgnoreAction;
    Qt::MouseButtons m_held = Qt::NoButton;
};

} // namespace moorline::test
