#include "chrome/BarItem.h"

#include "TrialItem.h"
#include "harness/TestCase.h"

#include <QMimeData>
#include <QSignalSpy>

using namespace moorline;
using namespace moorline::test;

namespace {

/// One item, 100 points wide and 40 high, 10 points from both edges.
struct Stage : Hand {
    Stage() { scene.addItem(item); }

    TrialItem *item = new TrialItem(QRectF(10, 10, 100, 40));
    QSignalSpy clicks{item, &BarItem::clicked};
};

void deleteWhatWaits()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace

class BarItemTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void isClickedWhenItIsLetGo()
    {
        Stage stage;
        stage.press({20, 20});
        QCOMPARE(stage.clicks.size(), 0);
        stage.release({22, 20});
        QCOMPARE(stage.clicks.size(), 1);
    }

    void noKeyChangesAClick()
    {
        for (const auto key : {Qt::ShiftModifier, Qt::ControlModifier, Qt::AltModifier, Qt::MetaModifier}) {
            Stage stage;
            stage.modifiers = key;
            stage.click({20, 20});
            QCOMPARE(stage.clicks.size(), 1);
        }
    }

    void aReleaseElsewhereIsNoClick()
    {
        Stage stage;
        stage.press({20, 20});
        stage.release({200, 20});
        QCOMPARE(stage.clicks.size(), 0);
    }

    void otherButtonsGiveNoClick()
    {
        Stage stage;
        for (const Qt::MouseButton button : {Qt::RightButton, Qt::MiddleButton}) {
            stage.press({20, 20}, button);
            stage.release({20, 20}, button);
        }
        QCOMPARE(stage.clicks.size(), 0);
    }

    void anotherButtonSpoilsTheClick()
    {
        Stage stage;
        stage.press({20, 20});
        stage.press({20, 20}, Qt::RightButton);
        QVERIFY(!stage.item->isPressed());
        stage.release({20, 20}, Qt::RightButton);
        stage.release({20, 20});
        QCOMPARE(stage.clicks.size(), 0);
    }

    void aDoubleClickIsOneClick()
    {
        Stage stage;
        stage.doubleClick({20, 20});
        QCOMPARE(stage.clicks.size(), 1);
        stage.click({20, 20});
        QCOMPARE(stage.clicks.size(), 2);
    }

    void aDoubleClickOnWhatIsRepeatableIsTwo()
    {
        Stage stage;
        stage.item->setRepeatable(true);
        stage.doubleClick({20, 20});
        QCOMPARE(stage.clicks.size(), 2);
    }

    void looksPressedOnlyWhereAReleaseWouldClick()
    {
        Stage stage;
        QSignalSpy changes(stage.item, &BarItem::pressedChanged);
        stage.press({20, 20});
        QVERIFY(stage.item->isPressed());
        stage.move({200, 20});
        QVERIFY(!stage.item->isPressed());
        stage.move({30, 20});
        QVERIFY(stage.item->isPressed());
        stage.release({30, 20});
        QVERIFY(!stage.item->isPressed());
        QCOMPARE(changes.size(), 4);
        QCOMPARE(stage.clicks.size(), 1);
    }

    void isHoveredWhileThePointerIsOnIt()
    {
        Stage stage;
        QSignalSpy changes(stage.item, &BarItem::hoveredChanged);
        stage.move({20, 20});
        QVERIFY(stage.item->isHovered());
        stage.move({25, 20});
        stage.move({200, 20});
        QVERIFY(!stage.item->isHovered());
        QCOMPARE(changes.size(), 2);
    }

    void whatIsNotTouchableLeavesThePointerToWhatLiesBelow()
    {
        Stage stage;
        auto *above = new TrialItem(QRectF(0, 0, 100, 40), stage.item);
        above->setTouchable(false);
        stage.click({20, 20});
        QCOMPARE(stage.clicks.size(), 1);
        QSignalSpy clicks(above, &BarItem::clicked);
        above->press();
        QCOMPARE(clicks.size(), 0);
        above->setTouchable(true);
        stage.click({20, 20});
        QCOMPARE(stage.clicks.size(), 1);
        QCOMPARE(clicks.size(), 1);
    }

    void hidingEndsWhatThePointerDid()
    {
        Stage stage;
        stage.move({20, 20});
        stage.press({20, 20});
        stage.item->hide();
        QVERIFY(!stage.item->isPressed());
        QVERIFY(!stage.item->isHovered());
        stage.release({20, 20});
        QCOMPARE(stage.clicks.size(), 0);
    }

    void aPressWithoutThePointerClicksToo()
    {
        Stage stage;
        stage.item->press();
        QCOMPARE(stage.clicks.size(), 1);
        stage.item->setEnabled(false);
        stage.item->press();
        stage.item->setEnabled(true);
        stage.item->hide();
        stage.item->press();
        QCOMPARE(stage.clicks.size(), 1);
    }

    void aMenuIsAskedForWhereSomeoneListens()
    {
        Stage stage;
        auto *above = new TrialItem(QRectF(0, 0, 50, 40), stage.item);
        QSignalSpy below(stage.item, &BarItem::menuRequested);
        QVERIFY(stage.askForMenu({20, 20}));
        QCOMPARE(below.size(), 1);
        QCOMPARE(below.first().first().toPointF(), QPointF(10, 10));
        QSignalSpy requests(above, &BarItem::menuRequested);
        QVERIFY(stage.askForMenu({20, 20}));
        QCOMPARE(requests.size(), 1);
        QCOMPARE(below.size(), 1);
    }

    void aMenuNobodyHasIsNotTaken()
    {
        Stage stage;
        QVERIFY(!stage.askForMenu({20, 20}));
    }

    void saysWhatItIsAndWhenThatChanged()
    {
        TrialItem item(QRectF(0, 0, 10, 10));
        QSignalSpy changes(&item, &BarItem::descriptionChanged);
        const BarItem::Description mail{
            .role = QAccessible::Button, .name = QStringLiteral("Mail"), .state = QStringLiteral("3")};
        item.setDescription(mail);
        item.setDescription(mail);
        QCOMPARE(changes.size(), 1);
        QCOMPARE(item.description(), mail);
        item.setDescription({.role = QAccessible::Button, .name = QStringLiteral("Mail"), .state = {}});
        QCOMPARE(changes.size(), 2);
    }

    void saysWhenItsHelpChanged()
    {
        TrialItem item(QRectF(0, 0, 10, 10));
        QSignalSpy changes(&item, &BarItem::helpTextChanged);
        item.setHelpText(QStringLiteral("Mail"));
        item.setHelpText(QStringLiteral("Mail"));
        QCOMPARE(changes.size(), 1);
        QCOMPARE(item.helpText(), QStringLiteral("Mail"));
    }

    void theItemsOfABarAreThoseShownFromLeftToRight()
    {
        QGraphicsScene scene;
        auto *bar = new QGraphicsWidget;
        scene.addItem(bar);
        auto *plain = new QGraphicsWidget(bar);
        auto *third = new TrialItem(QRectF(60, 0, 10, 10), bar);
        auto *second = new TrialItem(QRectF(30, 0, 10, 10), plain);
        auto *first = new TrialItem(QRectF(0, 0, 10, 10), bar);
        auto *inside = new TrialItem(QRectF(0, 0, 5, 5), first);
        (new TrialItem(QRectF(20, 0, 5, 5), bar))->hide();
        QCOMPARE(barItems(*bar), (QList<BarItem *>{first, second, third}));
        QCOMPARE(barItems(*first), QList<BarItem *>{inside});
    }

    void retiredItIsHiddenAtOnceAndDeletedLater()
    {
        Stage stage;
        const QPointer<TrialItem> item = stage.item;
        QSignalSpy retired(item, &BarItem::retired);
        item->retire();
        item->retire();
        QCOMPARE(retired.size(), 1);
        QVERIFY(item);
        QVERIFY(!item->isVisible());
        deleteWhatWaits();
        QVERIFY(!item);
    }

    void itMayRetireInItsOwnClick()
    {
        Stage stage;
        const QPointer<TrialItem> item = stage.item;
        connect(item, &BarItem::clicked, item, [&item] {
            item->retire();
            // As a menu or a dialog would run it.
            deleteWhatWaits();
            QVERIFY(item);
        });
        stage.click({20, 20});
        deleteWhatWaits();
        QVERIFY(!item);
    }

    void whatItIsInMayRetireInItsClick()
    {
        for (const bool isInAContainer : {false, true}) {
            Stage stage;
            const QPointer<TrialItem> widget = stage.item;
            QGraphicsItem *around = isInAContainer ? new QGraphicsWidget(new QGraphicsWidget(widget)) : widget.data();
            auto *icon = new TrialItem(QRectF(0, 0, 50, 40), around);
            connect(icon, &BarItem::clicked, icon, [&widget] {
                widget->retire();
                deleteWhatWaits();
                QVERIFY(widget);
            });
            stage.click({20, 20});
            deleteWhatWaits();
            QVERIFY(!widget);
        }
    }

    void itMayRetireInWhateverThePointerLeadsTo_data()
    {
        QTest::addColumn<std::function<void(Stage &)>>("before");
        QTest::addColumn<std::function<void(Stage &)>>("event");
        const auto row = [](const char *name, std::function<void(Stage &)> before, std::function<void(Stage &)> event) {
            QTest::newRow(name) << std::move(before) << std::move(event);
        };
        static QMimeData data;
        data.setText(QStringLiteral("text"));
        const auto nothing = [](Stage &) {};
        const auto come = [](Stage &stage) { stage.move({20, 20}); };
        const auto press = [](Stage &stage) { stage.press({20, 20}); };
        const auto leave = [](Stage &stage) { stage.move({200, 20}); };
        const auto drag = [](Stage &stage) { stage.dragOver({20, 20}, data, Qt::CopyAction); };
        row("press", nothing, press);
        row("move", press, leave);
        row("release", press, [](Stage &stage) { stage.release({20, 20}); });
        row("another button", press, [](Stage &stage) { stage.press({20, 20}, Qt::RightButton); });
        row("pointer comes", nothing, come);
        row("pointer leaves", come, leave);
        row("drag comes", nothing, drag);
        row("drag leaves", drag, [](Stage &stage) { stage.dragAway(); });
    }

    void itMayRetireInWhateverThePointerLeadsTo()
    {
        QFETCH(std::function<void(Stage &)>, before);
        QFETCH(std::function<void(Stage &)>, event);
        Stage stage;
        const QPointer<TrialItem> item = stage.item;
        item->taken = {QStringLiteral("text/plain")};
        before(stage);
        int retirements = 0;
        const auto retire = [&] {
            item->retire();
            deleteWhatWaits();
            QVERIFY(item);
            ++retirements;
        };
        for (const auto changed : {&BarItem::pressedChanged, &BarItem::hoveredChanged, &BarItem::dropHoveredChanged})
            connect(item, changed, item, retire);
        event(stage);
        QVERIFY(retirements > 0);
        deleteWhatWaits();
        QVERIFY(!item);
    }

    void itMayBeDestroyedByWhatEndsWithThePointer()
    {
        for (const auto changed : {&BarItem::pressedChanged, &BarItem::hoveredChanged}) {
            for (const bool isHidden : {true, false}) {
                Stage stage;
                stage.move({20, 20});
                stage.press({20, 20});
                const QPointer<TrialItem> item = stage.item;
                connect(item, changed, &stage.scene, [item] { delete item; });
                QHideEvent hidden;
                if (isHidden)
                    QCoreApplication::sendEvent(item, &hidden);
                else
                    item->setTouchable(false);
                QVERIFY(!item);
            }
        }
    }

    void itMayBeDestroyedByItsOwnClick()
    {
        Stage stage;
        const QPointer<TrialItem> item = stage.item;
        connect(item, &BarItem::clicked, &stage.scene, [&item] { delete item; });
        stage.click({20, 20});
        QVERIFY(!item);
        stage.click({20, 20});
        stage.move({30, 30});
    }
};

MOORLINE_TEST(BarItemTest);

#include "BarItemTest.moc"
