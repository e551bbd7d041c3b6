#include "dock/DockHostingView.h"

#include "DockFixture.h"
#include "chrome/BarWidget.h"
#include "chrome/HelpTag.h"
#include "harness/TestCase.h"

#include <QGuiApplication>
#include <QHelpEvent>
#include <QScreen>
#include <QToolTip>

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

namespace {

constexpr QPoint onTheWidget(300, 49);
constexpr QPoint besideThePill(20, 49);

/// The offscreen platform has no stacking order, and says so of each tooltip that is shown.
void expectRaiseWarning()
{
    QTest::ignoreMessage(QtWarningMsg, "This plugin does not support raise()");
}

/// A bar with one widget, which has something to tell.
struct Stage : DockFixture {
    Stage()
    {
        change([](Settings &settings) { settings.enabledWidgets = {WidgetKind::clock}; });
        view = std::make_unique<DockHostingView>(std::make_unique<DockBarView>(barContext(), [](qreal) {}));
        view->resize(600, 98);
        view->move(100, 400);
        view->show();
    }

    [[nodiscard]] const HelpTag &tag() const { return view->helpTag(); }

    void move(const QPoint &place, Qt::MouseButtons held = Qt::NoButton)
    {
        QMouseEvent event(
            QEvent::MouseMove, place, view->viewport()->mapToGlobal(place), Qt::NoButton, held, Qt::NoModifier);
        QCoreApplication::sendEvent(view->viewport(), &event);
    }
    /// Long enough to be told something.
    void rest(const QPoint &place)
    {
        move(place);
        expectRaiseWarning();
        clock.advance(700ms);
    }
    void send(QEvent::Type type)
    {
        QEvent event(type);
        QCoreApplication::sendEvent(view->viewport(), &event);
    }

    std::unique_ptr<DockHostingView> view;
};

} // namespace

class DockHostingViewTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void aRestingPointerIsToldAboutTheWidget()
    {
        Stage stage;
        stage.move(onTheWidget);
        stage.clock.advance(699ms);
        QVERIFY(!stage.tag().isVisible());
        expectRaiseWarning();
        stage.clock.advance(1ms);
        QVERIFY(stage.tag().isVisible());
        QCOMPARE(stage.tag().text(), QStringLiteral("clock"));
        const QRect tag = stage.tag().geometry();
        // Six points above the pill, which begins 13 points below the top of the view.
        QCOMPARE(tag.bottom() + 1, stage.view->mapToGlobal(QPoint(0, 13 - 6)).y());
        QVERIFY(std::abs(tag.center().x() - stage.view->mapToGlobal(onTheWidget).x()) <= 2);
    }

    void aPointerThatComesAndDoesNotMoveIsToldToo()
    {
        Stage stage;
        QEnterEvent event(onTheWidget, onTheWidget, stage.view->viewport()->mapToGlobal(onTheWidget));
        QCoreApplication::sendEvent(stage.view->viewport(), &event);
        expectRaiseWarning();
        stage.clock.advance(700ms);
        QVERIFY(stage.tag().isVisible());
    }

    void aMovingPointerIsNotDisturbed()
    {
        Stage stage;
        for (int i = 0; i < 10; ++i) {
            stage.move(onTheWidget + QPoint(i % 2, 0));
            stage.clock.advance(600ms);
        }
        QVERIFY(!stage.tag().isVisible());
    }

    void aPointerThatLeftIsToldNothing()
    {
        Stage stage;
        stage.move(onTheWidget);
        stage.send(QEvent::Leave);
        stage.clock.advance(10s);
        QVERIFY(!stage.tag().isVisible());
    }

    void theSystemsOwnTooltipIsNotShown()
    {
        Stage stage;
        QHelpEvent event(QEvent::ToolTip, onTheWidget, stage.view->viewport()->mapToGlobal(onTheWidget));
        QVERIFY(QCoreApplication::sendEvent(stage.view->viewport(), &event));
        QVERIFY(!QToolTip::isVisible());
    }

    void nothingIsToldBesideTheWidgets()
    {
        Stage stage;
        stage.move(besideThePill);
        stage.clock.advance(10s);
        QVERIFY(!stage.tag().isVisible());
    }

    void movingWithinTheWidgetKeepsTheTag()
    {
        Stage stage;
        stage.rest(onTheWidget);
        stage.move(onTheWidget + QPoint(3, 3));
        QVERIFY(stage.tag().isVisible());
        stage.move(besideThePill);
        QVERIFY(!stage.tag().isVisible());
    }

    void theNextTagComesAtOnce()
    {
        Stage stage;
        stage.change([](Settings &settings) { settings.enabledWidgets = {WidgetKind::clock, WidgetKind::calendar}; });
        const int middle = stage.view->width() / 2;
        stage.rest({middle - 40, 49});
        QCOMPARE(stage.tag().text(), QStringLiteral("clock"));
        expectRaiseWarning();
        stage.move({middle + 50, 49});
        QVERIFY(stage.tag().isVisible());
        QCOMPARE(stage.tag().text(), QStringLiteral("calendar"));
    }

    void aPointerThatHoldsAButtonIsToldNothing()
    {
        Stage stage;
        stage.move(onTheWidget, Qt::LeftButton);
        stage.clock.advance(10s);
        QVERIFY(!stage.tag().isVisible());
    }

    void theTagFollowsItsWidget()
    {
        Stage stage;
        stage.rest(onTheWidget);
        stage.widgets[WidgetKind::clock]->setHelpText(QStringLiteral("Clear\nFeels like 3°"));
        QCOMPARE(stage.tag().text(), QStringLiteral("Clear\nFeels like 3°"));
        QVERIFY(stage.tag().isVisible());
    }

    void theTagOutlivesItsWidget()
    {
        Stage stage;
        stage.rest(onTheWidget);
        stage.change([](Settings &settings) { settings.enabledWidgets.clear(); });
        stage.move(onTheWidget);
        QVERIFY(!stage.tag().isVisible());
    }

    void theTagGoesWithThePointer()
    {
        for (const QEvent::Type type : {QEvent::Leave, QEvent::MouseButtonPress}) {
            Stage stage;
            stage.rest(onTheWidget);
            if (type == QEvent::Leave)
                stage.send(type);
            else
                QTest::mousePress(stage.view->viewport(), Qt::LeftButton, {}, onTheWidget);
            QVERIFY(!stage.tag().isVisible());
        }
    }

    void theTagGoesWithTheBar()
    {
        Stage stage;
        stage.rest(onTheWidget);
        stage.view->hide();
        QVERIFY(!stage.tag().isVisible());
    }

    void theTagGoesByItself()
    {
        Stage stage;
        stage.rest(onTheWidget);
        stage.clock.advance(9900ms);
        QVERIFY(stage.tag().isVisible());
        stage.clock.advance(100ms);
        QVERIFY(!stage.tag().isVisible());
    }

    void theTagKeepsToTheScreen()
    {
        Stage stage;
        const QRect screen = QGuiApplication::primaryScreen()->geometry();
        for (const int x : {screen.left() - 300, screen.right() - 300}) {
            stage.view->move(x, 0);
            stage.rest(onTheWidget);
            QVERIFY2(screen.contains(stage.tag().geometry()), qPrintable(QString::number(x)));
            stage.send(QEvent::Leave);
        }
    }

    void theTagTakesNoInput()
    {
        Stage stage;
        QVERIFY(stage.tag().testAttribute(Qt::WA_TransparentForMouseEvents));
        QVERIFY(stage.tag().testAttribute(Qt::WA_ShowWithoutActivating));
        QCOMPARE(stage.tag().focusPolicy(), Qt::NoFocus);
    }

    void everyLineIsPainted()
    {
        FakeClock clock;
        QWidget parent;
        HelpTag tag(clock, &parent);
        expectRaiseWarning();
        tag.showText(QStringLiteral("Clear"), {400, 400});
        const int oneLine = tag.height();
        tag.showText(QStringLiteral("Clear\nFeels like 3°"), {400, 400});
        QVERIFY(tag.height() > oneLine + 8);
        const QImage image = tag.grab().toImage();
        for (const int y : {oneLine / 2, image.height() - oneLine / 2}) {
            bool isBright = false;
            for (int x = 0; x < image.width(); ++x)
                isBright = isBright || qGray(image.pixel(x, y)) > 150;
            QVERIFY(isBright);
        }
    }
};

MOORLINE_TEST(DockHostingViewTest);

#include "DockHostingViewTest.moc"
