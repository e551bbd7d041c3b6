#pragma once

#include "IconsFixture.h"
#include "apps/AppShortcutsWidget.h"
#include "chrome/ReorderDrag.h"

#include <QApplication>
#include <QSignalSpy>

namespace moorline::test {

/// Three icons at 20, 72 and 124, and a pointer that carries the first of them.
struct ShortcutDrag : IconsFixture {
    ShortcutDrag()
    {
        QApplication::setStartDragDistance(10);
        pin({notes, finder, mail});
        row = new AppShortcutsWidget(context());
        row->setPos(20, 20);
        row->setStage(&stage);
        hand.scene.addItem(row);
        written.clear();
    }

    /// One that is 300 points wide and 100 high.
    void putIntoABar()
    {
        auto *bar = new QGraphicsWidget;
        bar->resize(300, 100);
        hand.scene.addItem(bar);
        row->setParentItem(bar);
    }

    /// Drags the icon that stands there. While it is dragged, `onDrag` is called.
    void drag(const QPoint &from, const std::function<void()> &onDrag)
    {
        AppShortcutButton *button = row->buttons().value((from.x() - 20) / 52);
        const auto connection = QObject::connect(button, &BarItem::draggedChanged, button, [button, onDrag] {
            if (button->isDragged())
                onDrag();
        });
        hand.press(from);
        hand.move(from + QPoint(12, 0));
        QObject::disconnect(connection);
    }

    [[nodiscard]] Qt::DropAction carryTo(const QPoint &place, const AppShortcut &shortcut)
    {
        const ReorderPayload payload(shortcut.id());
        return hand.dragOver(place, payload, Qt::MoveAction);
    }

    void letGoAt(const QPointF &screenPlace)
    {
        platform.pointer.place = screenPlace;
        platform.pointer.buttons = Qt::NoButton;
        platform.clock.advance(std::chrono::milliseconds(80));
    }

    [[nodiscard]] QString names() const
    {
        QStringList shown;
        for (const AppShortcutButton *button : row->buttons())
            shown.append(button->shortcut().name);
        return shown.join(u' ');
    }
    [[nodiscard]] QString storedNames() const
    {
        QStringList stored;
        for (const AppShortcut &shortcut : store.settings().appShortcuts)
            stored.append(shortcut.name);
        return stored.join(u' ');
    }

    Hand hand;
    AppShortcutsWidget *row = nullptr;
    QSignalSpy written{&store, &SettingsStore::settingsDidChange};
};

inline constexpr QPoint first(40, 40);
inline constexpr QPoint second(92, 40);
inline constexpr QPoint third(144, 40);
/// Of the screen, whose panel is 98 points high.
inline constexpr QPointF onTheBar(700, 50);
inline constexpr QPointF offTheBar(700, 159);

} // namespace moorline::test
