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

constexpr QPoint onTheWeather(300, 49);
constexpr QPoint besideThePill(20, 49);

/// The offscreen platform has no stacking order, and says so of each tooltip that is shown.
void expectRaiseWarning()
{
    QTest::ignoreMessage(QtWarningMsg, "This plugin does not support raise()");
}

/// A bar with the weather alone, which has something to tell.
struct Stage : DockFixture {
    Stage()
    {
        change([](Settings &settings) { settings.enabledWidgets = {WidgetKind::weather}; });
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
        stage.move(onTheWeather);
        stage.clock.advance(699ms);
        QVERIFY(!stage.tag().isVisible());
        expectRaiseWarning();
        stage.clock.advance(1ms);
        QVERIFY(stage.tag().isVisible());
        QCOMPARE(stage.tag().text(), QStringLiteral("Weather"));
        const QRect tag = stage.tag().geometry();
        // Six points above the pill, which begins 13 points below the top of the view.
        QCOMPARE(tag.bottom() + 1, stage.view->mapToGlobal(QPoint(0, 13 - 6)).y());
        QVERIFY(std::abs(tag.center().x() - stage.view->mapToGlobal(onTheWeather).x()) <= 2);
    }

    void aPointerThatComesAndDoesNotMoveIsToldToo()
    {
        Stage stage;
        QEnterEvent event(onTheWeather, onTheWeather, stage.view->viewport()->mapToGlobal(onTheWeather));
        QCoreApplication::sendEvent(stage.view->viewport(), &event);
        expectRaiseWarning();
        stage.clock.advance(700ms);
        QVERIFY(stage.tag().isVisible());
    }

    void aMovingPointerIsNotDisturbed()
    {
        Stage stage;
        for (int i = 0; i < 10; ++i) {
            stage.move(onTheWeather + QPoint(i % 2, 0));
            stage.clock.advance(600ms);
        }
        QVERIFY(!stage.tag().isVisible());
    }

    void aPointerThatLeftIsToldNothing()
    {
        Stage stage;
        stage.move(onTheWeather);
        stage.send(QEvent::Leave);
        stage.clock.advance(10s);
        QVERIFY(!stage.tag().isVisible());
    }

    void theSystemsOwnTooltipIsNotShown()
    {
        Stage stage;
        QHelpEvent event(QEvent::ToolTip, onTheWeather, stage.view->viewport()->mapToGlobal(onTheWeather));
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
        stage.rest(onTheWeather);
        stage.move(onTheWeather + QPoint(3, 3));
        QVERIFY(stage.tag().isVisible());
        stage.move(besideThePill);
        QVERIFY(!stage.tag().isVisible());
    }

    void theNextTagComesAtOnce()
    {
        Stage stage;
        stage.change([](Settings &settings) { settings.enabledWidgets = {WidgetKind::weather, WidgetKind::forecast}; });
        stage.change([](Settings &settings) { settings.useCurrentLocation = false; });
        stage.weather.start();
        QVERIFY(stage.httpClient.answerJson(R"({"current": {"temperature_2m": 1, "relative_humidity_2m": 2,
            "apparent_temperature": 3, "is_day": 1, "weather_code": 0, "wind_speed_10m": 4},
            "daily": {"time": ["2025-03-04", "2025-03-05"]}})"));
        const int middle = stage.view->width() / 2;
        stage.rest({middle - 40, 49});
        QCOMPARE(stage.tag().text(), QStringLiteral("Clear\nFeels like 3°"));
        expectRaiseWarning();
        stage.move({middle + 50, 49});
        QVERIFY(stage.tag().isVisible());
        QCOMPARE(stage.tag().text(), QStringLiteral("Open Weather"));
    }

    void aPointerThatHoldsAButtonIsToldNothing()
    {
        Stage stage;
        stage.move(onTheWeather, Qt::LeftButton);
        stage.clock.advance(10s);
        QVERIFY(!stage.tag().isVisible());
    }

    void theTagFollowsItsWidget()
    {
        Stage stage;
        stage.change([](Settings &settings) { settings.useCurrentLocation = false; });
        stage.weather.start();
        stage.rest(onTheWeather);
        QCOMPARE(stage.tag().text(), QStringLiteral("Weather"));
        QVERIFY(stage.httpClient.answerJson(R"({"current": {"temperature_2m": 1, "relative_humidity_2m": 2,
            "apparent_temperature": 3, "is_day": 1, "weather_code": 0, "wind_speed_10m": 4}})"));
        QCOMPARE(stage.tag().text(), QStringLiteral("Clear\nFeels like 3°"));
        QVERIFY(stage.tag().isVisible());
    }

    void theTagOutlivesItsWidget()
    {
        Stage stage;
        stage.rest(onTheWeather);
        stage.change([](Settings &settings) { settings.enabledWidgets = {WidgetKind::clock}; });
        stage.move(onTheWeather);
        QVERIFY(!stage.tag().isVisible());
    }

    void theTagGoesWithThePointer()
    {
        for (const QEvent::Type type : {QEvent::Leave, QEvent::MouseButtonPress}) {
            Stage stage;
            stage.rest(onTheWeather);
            if (type == QEvent::Leave)
                stage.send(type);
            else
                QTest::mousePress(stage.view->viewport(), Qt::LeftButton, {}, onTheWeather);
            QVERIFY(!stage.tag().isVisible());
        }
    }

    void theTagGoesWithTheBar()
    {
        Stage stage;
        stage.rest(onTheWeather);
        stage.view->hide();
        QVERIFY(!stage.tag().isVisible());
    }

    void theTagGoesByItself()
    {
        Stage stage;
        stage.rest(onTheWeather);
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
            stage.rest(onTheWeather);
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
