#include "X11TestCase.h"

#include "chrome/BarDrag.h"
#include "chrome/BarItem.h"
#include "chrome/BarStage.h"
#include "chrome/Popover.h"
#include "chrome/ReorderDrag.h"
#include "fakes/FakeClock.h"
#include "fakes/FakeSystem.h"
#include "platform/linux/x11/X11PanelWindow.h"
#include "platform/linux/x11/X11Pointer.h"
#include "platform/linux/x11/X11PopupWindows.h"
#include "platform/linux/x11/X11Screens.h"
#include "theme/Symbols.h"

#include <QApplication>
#include <QDrag>
#include <QDragEnterEvent>
#include <QGraphicsView>
#include <QMimeData>
#include <QSignalSpy>
#include <QTimer>

using namespace moorline;
using namespace moorline::test;

namespace {

constexpr std::uint8_t escapeKey = 9;
constexpr std::uint8_t letterKey = 38;
constexpr std::uint8_t leftButton = 1;
constexpr QPoint onTheItem(720, 850);
constexpr QPoint onTheTarget(250, 250);
const QString reorderedID = QStringLiteral("reordered");

/// What a drag of the bar may end on.
class DropTarget final : public QWidget {
public:
    DropTarget()
    {
        setWindowFlags(Qt::Window | Qt::BypassWindowManagerHint);
        setAttribute(Qt::WA_ShowWithoutActivating);
        setAcceptDrops(true);
        setGeometry(200, 200, 100, 100);
    }

    bool isHovered = false;
    int drops = 0;

private:
    void dragEnterEvent(QDragEnterEvent *event) override
    {
        isHovered = true;
        event->acceptProposedAction();
    }
    void dragLeaveEvent(QDragLeaveEvent *) override { isHovered = false; }
    void dropEvent(QDropEvent *event) override
    {
        ++drops;
        event->acceptProposedAction();
    }
};

class TrialItem final : public BarItem {
public:
    using BarItem::DragEnd;
    using BarItem::DragKind;

    TrialItem()
    {
        setGeometry(QRectF(0, 0, 100, 100));
        setTouchable(true);
        setDraggable(DragKind::out);
    }

    using BarItem::setDraggable;

    /// In the event loop of the drag.
    std::function<void()> onDrag;
    /// In place of the drag of a payload.
    std::function<void()> carry;
    /// Dragged to another place in the bar.
    bool isReordered = false;
    QList<QPointF> places;
    QList<DragEnd> ends;

protected:
    void drag(const QPointF &) override
    {
        QTimer::singleShot(0, this, onDrag);
        if (carry)
            return carry();
        if (isReordered)
            return carryReordered(*this, reorderedID, {}, {});
        auto *data = new QMimeData;
        data->setText(QStringLiteral("payload"));
        auto *drag = new QDrag(scene()->views().first());
        drag->setMimeData(data);
        drag->exec(Qt::CopyAction);
    }
    void dragTo(const QPointF &place) override { places.append(place); }
    void dragEnded(DragEnd end) override { ends.append(end); }
    [[nodiscard]] bool takesReorder(const QString &id) const override { return id == reorderedID; }
    void reorderMoved(const QString &, const QPointF &place) override { places.append(place); }
};

/// A panel as the bar has it, of one item, at the bottom of the screen.
struct Bar {
    explicit Bar(XConnection &connection, ClientWindows &clients)
        : panel(connection, clients, clock)
        , windows(connection)
        , pointer(connection)
        , screens(&connection)
        , view(&scene)
    {
        scene.setSceneRect(0, 0, 100, 100);
        scene.addItem(item);
        item->setStage(&stage);
        view.setFrameStyle(QFrame::NoFrame);
        view.viewport()->setMouseTracking(true);
        panel.adopt(view);
        QPainterPath whole;
        whole.addRect(0, 0, 100, 100);
        panel.setInteractiveArea(whole);
        panel.setFrame({670, 0, 100, 100});
        panel.orderFrontRegardless();
    }

    FakeClock clock;
    FakeSymbolCatalogue images;
    Symbols symbols{images};
    X11PanelWindow panel;
    X11PopupWindows windows;
    X11Pointer pointer;
    X11Screens screens;
    BarHolds holds;
    BarStage stage{{windows, screens, panel, pointer, clock, symbols, holds}};
    QGraphicsScene scene;
    TrialItem *item = new TrialItem;
    QGraphicsView view;
    QSignalSpy clicks{item, &BarItem::clicked};
};

/// Items are dragged by a real pointer, and a pop-over is closed, while another program's window has the keyboard. Run
/// under window managers, and without one.
class BarDragTest final : public X11TestCase {
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        X11TestCase::init();
        typist = showFocused();
        bar = std::make_unique<Bar>(*connection, *clients);
        target = std::make_unique<DropTarget>();
        target->show();
        QVERIFY(QTest::qWaitForWindowExposed(&bar->view));
        QVERIFY(QTest::qWaitForWindowExposed(target.get()));
    }

    void cleanup()
    {
        foreign->setButton(leftButton, false);
        target.reset();
        bar.reset();
        X11TestCase::cleanup();
    }

    void whatIsLetGoIsDropped()
    {
        bar->item->onDrag = [this] {
            foreign->movePointer(onTheTarget);
            QTRY_VERIFY(target->isHovered);
            QVERIFY(bar->holds.isHeld());
            foreign->setButton(leftButton, false);
        };
        startDragging();
        QTRY_COMPARE(bar->item->ends, QList{TrialItem::DragEnd::letGo});
        QTRY_COMPARE(target->drops, 1);
        QVERIFY(!bar->holds.isHeld());
    }

    void whatIsLetGoAboveNothingIsNotCancelled()
    {
        bar->item->onDrag = [this] {
            foreign->movePointer({1000, 100});
            foreign->setButton(leftButton, false);
        };
        startDragging();
        QTRY_COMPARE(bar->item->ends, QList{TrialItem::DragEnd::letGo});
        QCOMPARE(target->drops, 0);
    }

    void aFileIsCarriedUntilItIsLetGo_data()
    {
        QTest::addColumn<bool>("isCancelled");
        QTest::newRow("let go") << false;
        QTest::newRow("Escape") << true;
    }

    void aFileIsCarriedUntilItIsLetGo()
    {
        QFETCH(bool, isCancelled);
        int ends = 0;
        bar->item->carry = [this, &ends] {
            CarriedFile file{.url = QUrl(QStringLiteral("file:///a")), .picture = {}, .offer = nullptr};
            bar->stage.carryFile(bar->view, {50, 50}, std::move(file), [&ends] { ++ends; });
        };
        bar->item->onDrag = [&] {
            foreign->movePointer(onTheTarget);
            QTRY_VERIFY(target->isHovered);
            QCOMPARE(ends, 0);
            if (isCancelled)
                type(escapeKey);
            else
                foreign->setButton(leftButton, false);
        };
        startDragging();
        QTRY_COMPARE(ends, 1);
        foreign->setButton(leftButton, false);
        QTRY_VERIFY(!bar->holds.isHeld());
        QCOMPARE(target->drops, isCancelled ? 0 : 1);
    }

    void escapeCancels_data()
    {
        QTest::addColumn<QPoint>("release");
        QTest::newRow("let go on the item") << onTheItem;
        QTest::newRow("let go on a target") << onTheTarget;
        QTest::newRow("let go elsewhere") << QPoint(1000, 100);
    }

    void escapeCancels()
    {
        QFETCH(QPoint, release);
        bar->item->onDrag = [this] {
            foreign->movePointer(onTheTarget);
            QTRY_VERIFY(target->isHovered);
            type(escapeKey);
        };
        startDragging();
        QTRY_COMPARE(bar->item->ends, QList{TrialItem::DragEnd::cancelled});
        QVERIFY(!bar->holds.isHeld());
        letGoAt(release);
        QCOMPARE(target->drops, 0);
        keyboardIsBack();
    }

    void whatIsHiddenMeanwhileIsCarriedNoFurther()
    {
        bar->item->onDrag = [this] {
            foreign->movePointer(onTheTarget);
            QTRY_VERIFY(target->isHovered);
            bar->item->hide();
        };
        startDragging();
        QTRY_COMPARE(bar->item->ends, QList{TrialItem::DragEnd::cancelled});
        QVERIFY(!bar->holds.isHeld());
        bar->item->show();
        letGoAt(onTheTarget);
        QCOMPARE(target->drops, 0);
    }

    void anItemIsCarriedOverAnotherOfTheBar_data()
    {
        QTest::addColumn<std::function<void(BarDragTest &)>>("finish");
        QTest::addColumn<TrialItem::DragEnd>("end");
        using Finish = std::function<void(BarDragTest &)>;
        QTest::newRow("let go") << Finish([](BarDragTest &test) { test.foreign->setButton(leftButton, false); })
                                << TrialItem::DragEnd::letGo;
        QTest::newRow("Escape") << Finish([](BarDragTest &test) { test.type(escapeKey); })
                                << TrialItem::DragEnd::cancelled;
    }

    void anItemIsCarriedOverAnotherOfTheBar()
    {
        QFETCH(std::function<void(BarDragTest &)>, finish);
        QFETCH(TrialItem::DragEnd, end);
        auto *other = new TrialItem;
        other->setGeometry(60, 0, 40, 100);
        other->setAcceptDrops(true);
        bar->scene.addItem(other);
        bar->item->isReordered = true;
        bar->item->onDrag = [&] {
            foreign->movePointer({740, 850});
            QTRY_COMPARE(other->places.value(0), QPointF(70, 50));
            // The row makes room.
            bar->item->setX(10);
            other->setX(50);
            foreign->movePointer({750, 860});
            QTRY_COMPARE(other->places.last(), QPointF(80, 60));
            QVERIFY(bar->item->ends.isEmpty());
            finish(*this);
        };
        startDragging();
        QTRY_COMPARE(bar->item->ends, QList{end});
        QVERIFY(!bar->holds.isHeld());
        QVERIFY(!other->isDropHovered());
    }

    void escapeCancelsADragInsideTheBar()
    {
        bar->item->setDraggable(TrialItem::DragKind::inside);
        startDragging();
        foreign->movePointer({740, 850});
        QTRY_VERIFY(!bar->item->places.isEmpty());
        QVERIFY(bar->holds.isHeld());
        type(escapeKey);
        QTRY_COMPARE(bar->item->ends, QList{TrialItem::DragEnd::cancelled});
        QVERIFY(!bar->holds.isHeld());
        letGoAt(onTheItem);
        keyboardIsBack();
    }

    void aDragInsideTheBarIsLetGo()
    {
        bar->item->setDraggable(TrialItem::DragKind::inside);
        startDragging();
        // Beyond the panel, too.
        foreign->movePointer({740, 500});
        QTRY_VERIFY(!bar->item->places.isEmpty() && bar->item->places.last() == QPointF(70, -300));
        foreign->setButton(leftButton, false);
        QTRY_COMPARE(bar->item->ends, QList{TrialItem::DragEnd::letGo});
        QCOMPARE(bar->clicks.size(), 0);
    }

    void otherKeysGoWhereTheyWent()
    {
        bar->item->setDraggable(TrialItem::DragKind::inside);
        startDragging();
        const auto before = foreign->keys(typist);
        type(letterKey);
        QTRY_COMPARE(foreign->keys(typist), before + 1);
        foreign->setButton(leftButton, false);
        QTRY_COMPARE(bar->item->ends.size(), 1);
    }

    void aKeyboardThatIsHeldElsewhereLeavesTheDrag()
    {
        foreign->grabKeyboard();
        escapeLeavesTheDrag();
    }

    void escapeThatAnotherProgramHasLeavesTheDrag()
    {
        foreign->grabKey(escapeKey);
        escapeLeavesTheDrag();
    }

    void escapeClosesAPopoverThatLeavesTheKeyboard()
    {
        bar->stage.openPopover(*bar->item, std::make_unique<PopoverContent>());
        const auto before = foreign->keys(typist);
        type(letterKey);
        QTRY_COMPARE(foreign->keys(typist), before + 1);
        QVERIFY(bar->stage.isOpen());
        type(escapeKey);
        QTRY_VERIFY(!bar->stage.isOpen());
        QCOMPARE(foreign->keys(typist), before + 1);
        keyboardIsBack();
    }

private:
    [[nodiscard]] xcb_window_t showFocused()
    {
        if (foreign->hasWindowManager())
            return showActive({.frame = {500, 200, 300, 200}});
        const xcb_window_t other = foreign->show({.frame = {500, 200, 300, 200}});
        foreign->focus(other);
        return other;
    }

    void startDragging()
    {
        foreign->movePointer(onTheItem);
        foreign->setButton(leftButton, true);
        QTRY_VERIFY(bar->item->isPressed());
        foreign->movePointer(onTheItem - QPoint(0, QApplication::startDragDistance()));
        QTRY_VERIFY(bar->item->isDragged() || !bar->item->ends.isEmpty());
    }

    void escapeLeavesTheDrag()
    {
        bar->item->onDrag = [this] {
            type(escapeKey);
            foreign->movePointer(onTheTarget);
            QTRY_VERIFY(target->isHovered);
            foreign->setButton(leftButton, false);
        };
        startDragging();
        QTRY_COMPARE(bar->item->ends, QList{TrialItem::DragEnd::letGo});
        QTRY_COMPARE(target->drops, 1);
    }

    void letGoAt(const QPoint &place)
    {
        foreign->movePointer(place);
        foreign->setButton(leftButton, false);
        // Whatever it led to would be here with this.
        foreign->movePointer({1200, 100});
        foreign->movePointer(onTheItem);
        foreign->movePointer(onTheItem + QPoint(5, 0));
        QTRY_VERIFY(bar->item->isHovered());
        QCOMPARE(bar->clicks.size(), 0);
        QCOMPARE(bar->item->ends.size(), 1);
    }

    void keyboardIsBack()
    {
        QCOMPARE(foreign->focus(), typist);
        const auto before = foreign->keys(typist);
        type(escapeKey);
        type(letterKey);
        QTRY_COMPARE(foreign->keys(typist), before + 2);
    }

    void type(std::uint8_t key) const
    {
        foreign->setKey(key, true);
        foreign->setKey(key, false);
    }

    xcb_window_t typist = XCB_WINDOW_NONE;
    std::unique_ptr<DropTarget> target;
    std::unique_ptr<Bar> bar;
};

MOORLINE_TEST(BarDragTest);

} // namespace

#include "BarDragTest.moc"
