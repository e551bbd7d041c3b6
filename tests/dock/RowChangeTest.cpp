#include "DockFixture.h"
#include "chrome/Popover.h"
#include "dock/DockHostingView.h"
#include "harness/TestCase.h"

#include <QMouseEvent>

using namespace moorline;
using namespace moorline::test;

namespace {

/// A widget with one icon, which does what a test tells it.
class Icon final : public BarItem {
public:
    explicit Icon(QGraphicsItem *parent)
        : BarItem(parent)
    {
        setGeometry(QRectF(0, 0, 80, 40));
        setTouchable(true);
        setDraggable(DragKind::out);
    }

    std::function<void()> onDrag;

protected:
    void drag(const QPointF &) override { onDrag(); }
};

class IconWidget final : public BarWidget {
public:
    IconWidget() { setNaturalSize({80, 40}); }

    Icon *icon = new Icon(this);
};

class List final : public PopoverContent {
public:
    [[nodiscard]] QSize sizeHint() const override { return {200, 150}; }
};

/// A bar in its view; the widget with the icon stands first.
struct Stage : DockFixture {
    Stage()
    {
        makeOther = [this](WidgetKind kind) -> std::unique_ptr<BarWidget> {
            if (kind != WidgetKind::appShortcut) {
                auto plain = std::make_unique<TrialWidget>(QSizeF(80, 40));
                other = plain.get();
                return plain;
            }
            auto made = std::make_unique<IconWidget>();
            widget = made.get();
            return made;
        };
        show({WidgetKind::appShortcut, WidgetKind::clock});
        view = std::make_unique<DockHostingView>(std::make_unique<DockBarView>(barContext(), [](qreal) {}));
        view->resize(600, 98);
        view->show();
    }

    void show(const QList<WidgetKind> &kinds)
    {
        change([&kinds](Settings &settings) { settings.enabledWidgets = kinds; });
    }
    void send(QEvent::Type type, const QPoint &place, Qt::MouseButtons held = Qt::LeftButton)
    {
        const auto button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
        QMouseEvent event(type, place, view->viewport()->mapToGlobal(place), button, held, Qt::NoModifier);
        QCoreApplication::sendEvent(view->viewport(), &event);
    }
    /// The pointer comes, and stays.
    void rest(const QPoint &place)
    {
        // The panel begins 100 points from the left, and ends 87 above the bottom of the screen.
        panelWindow.frames = {QRectF(100, -11, 600, 98)};
        pointer.place = {100.0 + place.x(), 87.0 - place.y()};
        view->viewport()->setAttribute(Qt::WA_UnderMouse);
        send(QEvent::MouseMove, place, Qt::NoButton);
    }
    void press() { send(QEvent::MouseButtonPress, spot()); }
    void release() { send(QEvent::MouseButtonRelease, spot(), Qt::NoButton); }
    void drag()
    {
        press();
        send(QEvent::MouseMove, spot() + QPoint(30, 0));
    }
    /// On the icon, while it is there.
    [[nodiscard]] QPoint spot() const
    {
        return widget ? view->mapFromScene(widget->sceneBoundingRect().center()) : QPoint(300, 49);
    }

    QPointer<IconWidget> widget;
    /// The last that was made of any other kind.
    QPointer<TrialWidget> other;
    std::unique_ptr<DockHostingView> view;
};

/// As the event loop of a drag, a menu or a dialog does: everything that is due.
void runEvents()
{
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace

/// The row changes while one of its items is in use.
class RowChangeTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void aDraggedItemOutlivesItsPlaceInTheRow()
    {
        Stage stage;
        bool dragged = false;
        stage.widget->icon->onDrag = [&] {
            QMetaObject::invokeMethod(
                stage.view.get(), [&stage] { stage.show({WidgetKind::clock}); }, Qt::QueuedConnection);
            runEvents();
            QVERIFY(stage.widget);
            QVERIFY(!stage.widget->isVisible());
            QVERIFY(stage.widget->icon->isDragged());
            QVERIFY(stage.holds.isHeld());
            dragged = true;
        };
        stage.drag();
        QVERIFY(dragged);
        QVERIFY(!stage.holds.isHeld());
        runEvents();
        QVERIFY(!stage.widget);
        stage.release();
        stage.drag();
    }

    void aDraggedItemThatStaysIsMoved()
    {
        Stage stage;
        const IconWidget *before = stage.widget;
        bool stayed = false;
        stage.widget->icon->onDrag = [&] {
            const qreal x = stage.widget->x();
            stage.show({WidgetKind::clock, WidgetKind::appShortcut});
            runEvents();
            stayed = stage.widget == before && stage.widget->icon->isDragged() && stage.widget->x() > x;
        };
        stage.drag();
        QVERIFY(stayed);
    }

    void aPointerThatRestsIsOnTheWidgetThatTookThePlace()
    {
        Stage stage;
        stage.rest(stage.spot());
        QVERIFY(stage.widget->icon->isHovered());
        // Both are of one width, and so is the row.
        stage.show({WidgetKind::clock, WidgetKind::appShortcut});
        runEvents();
        QVERIFY(!stage.widget->icon->isHovered());
        QVERIFY(stage.other->isHovered());
    }

    void aPointerThatRestsIsOnTheItemThatTookThePlace()
    {
        Stage stage;
        auto *second = new Icon(stage.widget);
        second->setPos(0, 200);
        runEvents();
        stage.rest(stage.spot());
        QVERIFY(stage.widget->icon->isHovered());
        second->setPos(0, 0);
        stage.widget->icon->setPos(0, 200);
        Q_EMIT stage.widget->itemsMoved();
        runEvents();
        QVERIFY(!stage.widget->icon->isHovered());
        QVERIFY(second->isHovered());
    }

    void aClickMayTakeItsOwnWidgetAway()
    {
        Stage stage;
        connect(stage.widget->icon, &BarItem::clicked, stage.view.get(), [&stage] {
            stage.show({});
            runEvents();
            QVERIFY(stage.widget);
        });
        stage.press();
        stage.release();
        runEvents();
        QVERIFY(!stage.widget);
    }

    void whatIsPressedMayLeaveBeforeItIsLetGo()
    {
        Stage stage;
        stage.press();
        QVERIFY(stage.widget->icon->isPressed());
        stage.show({WidgetKind::clock});
        QVERIFY(!stage.widget->icon->isPressed());
        runEvents();
        QVERIFY(!stage.widget);
        stage.release();
        stage.send(QEvent::MouseMove, {300, 49}, Qt::NoButton);
    }

    void theBarMayGoDuringADrag()
    {
        Stage stage;
        stage.widget->icon->onDrag = [&] {
            stage.view->hide();
            runEvents();
        };
        stage.drag();
        QVERIFY(!stage.holds.isHeld());
        QVERIFY(stage.widget);
    }

    void aPopoverGoesWithItsItem()
    {
        Stage stage;
        stage.stage.openPopover(*stage.widget->icon, std::make_unique<List>());
        QVERIFY(stage.stage.isOpenAt(*stage.widget->icon));
        stage.show({WidgetKind::clock});
        QVERIFY(!stage.stage.isOpen());
        QVERIFY(!stage.holds.isHeld());
        runEvents();
        QVERIFY(!stage.widget);
    }

    void aPopoverStaysWithItsItem()
    {
        Stage stage;
        stage.stage.openPopover(*stage.widget->icon, std::make_unique<List>());
        stage.show({WidgetKind::clock, WidgetKind::calendar, WidgetKind::appShortcut});
        runEvents();
        QVERIFY(stage.widget);
        QVERIFY(stage.stage.isOpenAt(*stage.widget->icon));
        QVERIFY(stage.holds.isHeld());
    }

    void aPopoverFollowsItsItemThroughTheRow()
    {
        Stage stage;
        stage.stage.openPopover(*stage.widget->icon, std::make_unique<List>());
        runEvents();
        const auto *popover = qobject_cast<BarPopup *>(stage.popupWindows.shown.value(0));
        const QRectF before = popover->frame();
        // Both are of one width, and so is the row.
        stage.show({WidgetKind::clock, WidgetKind::appShortcut});
        runEvents();
        QCOMPARE(popover->frame(), before.translated(80 + 14 + 1 + 14, 0));
    }

    void aPopoverMayTakeItsOwnItemAway()
    {
        Stage stage;
        auto list = std::make_unique<List>();
        const QPointer<List> content = list.get();
        stage.stage.openPopover(*stage.widget->icon, std::move(list));
        connect(content, &PopoverContent::finished, stage.view.get(), [&stage] { stage.show({}); });
        Q_EMIT content->finished();
        QVERIFY(!stage.stage.isOpen());
        runEvents();
        QVERIFY(!content);
        QVERIFY(!stage.widget);
    }

    void widgetsThatStayAreTheSameObjects()
    {
        Stage stage;
        const QPointer<IconWidget> widget = stage.widget;
        stage.show({WidgetKind::calendar, WidgetKind::appShortcut, WidgetKind::weather});
        stage.show({WidgetKind::weather, WidgetKind::clock, WidgetKind::appShortcut});
        runEvents();
        QVERIFY(widget);
        QCOMPARE(stage.widget, widget);
        QCOMPARE(stage.view->bar().row(),
            (QList<WidgetKind>{WidgetKind::weather, WidgetKind::clock, WidgetKind::appShortcut}));
    }

    void aKindThatIsShownTwiceHasTwoWidgets()
    {
        Stage stage;
        const QPointer<IconWidget> first = stage.widget;
        stage.show({WidgetKind::appShortcut, WidgetKind::appShortcut});
        QVERIFY(stage.widget != first);
        const QPointer<IconWidget> second = stage.widget;
        stage.show({WidgetKind::appShortcut, WidgetKind::clock, WidgetKind::appShortcut});
        runEvents();
        QVERIFY(first && second);
        QVERIFY(first->x() < second->x());
    }
};

MOORLINE_TEST(RowChangeTest);

#include "RowChangeTest.moc"
