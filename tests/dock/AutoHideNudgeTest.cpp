#include "dock/AutoHideNudge.h"

#include "DockFixture.h"
#include "harness/TestCase.h"

#include <QGraphicsScene>
#include <QGraphicsView>
#include <QMouseEvent>
#include <QPainter>
#include <QSignalSpy>

using namespace moorline;
using namespace moorline::test;

namespace {

/// A nudge in a view, so that presses are real ones.
struct Stage {
    explicit Stage(qreal width = 0)
    {
        nudge = new AutoHideNudge(symbols);
        scene.addItem(nudge);
        nudge->resize(width > 0 ? width : nudge->naturalWidth(), 26);
        scene.setSceneRect(0, 0, 1000, 40);
        view.setScene(&scene);
        view.setAlignment(Qt::AlignLeft | Qt::AlignTop);
        view.setFrameStyle(QFrame::NoFrame);
        view.viewport()->setMouseTracking(true);
        view.resize(1000, 40);
        view.show();
    }

    QImage picture()
    {
        QImage image(1000, 26, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        scene.render(&painter, QRectF(0, 0, 1000, 26), QRectF(0, 0, 1000, 26));
        return image;
    }

    void send(QEvent::Type type, const QPointF &place)
    {
        const QPoint spot = view.mapFromScene(place);
        QMouseEvent event(type, spot, view.viewport()->mapToGlobal(spot), Qt::LeftButton,
            type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(view.viewport(), &event);
    }

    void click(const QPointF &place)
    {
        send(QEvent::MouseButtonPress, place);
        send(QEvent::MouseButtonRelease, place);
    }

    [[nodiscard]] QPointF onTheButton() const { return {nudge->size().width() - 40, 13}; }
    [[nodiscard]] BarItem &button() const { return *barItems(*nudge).first(); }

    FakeSymbolCatalogue images;
    Symbols symbols{images};
    QGraphicsScene scene;
    QGraphicsView view;
    AutoHideNudge *nudge;
};

} // namespace

class AutoHideNudgeTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void theButtonIsAtTheEndAndTakesTheOffer()
    {
        Stage stage;
        QSignalSpy accepted(stage.nudge, &AutoHideNudge::accepted);
        stage.click(stage.onTheButton());
        QCOMPARE(accepted.size(), 1);
    }

    void theTextIsNoButton()
    {
        Stage stage;
        QSignalSpy accepted(stage.nudge, &AutoHideNudge::accepted);
        stage.click({40, 13});
        QCOMPARE(accepted.size(), 0);
    }

    void aPressThatLeavesTheButtonIsTakenBack()
    {
        Stage stage;
        QSignalSpy accepted(stage.nudge, &AutoHideNudge::accepted);
        stage.send(QEvent::MouseButtonPress, stage.onTheButton());
        stage.send(QEvent::MouseButtonRelease, {40, 13});
        QCOMPARE(accepted.size(), 0);
    }

    void aDoubleClickTakesTheOfferOnce()
    {
        Stage stage;
        QSignalSpy accepted(stage.nudge, &AutoHideNudge::accepted);
        stage.click(stage.onTheButton());
        stage.send(QEvent::MouseButtonDblClick, stage.onTheButton());
        stage.send(QEvent::MouseButtonRelease, stage.onTheButton());
        QCOMPARE(accepted.size(), 1);
    }

    void saysWhatItIsAbout()
    {
        Stage stage;
        const QString text =
            QStringLiteral("The macOS Dock is sitting underneath this one. Turn on auto-hide to clear the space.");
        QCOMPARE(stage.nudge->helpText(), text);
        QCOMPARE(stage.nudge->description().name, text);
        QCOMPARE(stage.nudge->description().role, QAccessible::StaticText);
        QCOMPARE(stage.button().description().name, QStringLiteral("Hide the macOS Dock"));
        QCOMPARE(stage.button().description().role, QAccessible::Button);
    }

    void theButtonCanBePressedWithoutThePointer()
    {
        Stage stage;
        QSignalSpy accepted(stage.nudge, &AutoHideNudge::accepted);
        stage.button().press();
        QCOMPARE(accepted.size(), 1);
    }

    void theButtonShowsWhatThePointerDoes()
    {
        Stage stage;
        // Left of the arrow, where the button is nothing but filled.
        const QPoint spot = stage.button().geometry().topLeft().toPoint() + QPoint(6, 10);
        const int atRest = stage.picture().pixelColor(spot).lightness();
        QMouseEvent move(QEvent::MouseMove, spot, stage.view.viewport()->mapToGlobal(spot), Qt::NoButton, Qt::NoButton,
            Qt::NoModifier);
        QCoreApplication::sendEvent(stage.view.viewport(), &move);
        const int hovered = stage.picture().pixelColor(spot).lightness();
        stage.send(QEvent::MouseButtonPress, spot);
        const int pressed = stage.picture().pixelColor(spot).lightness();
        stage.send(QEvent::MouseButtonRelease, {40, 13});
        QVERIFY(hovered > atRest);
        QVERIFY(pressed < atRest);
    }

    void showsTheArrowOfTheButton()
    {
        Stage stage;
        stage.picture();
        QCOMPARE(stage.images.requests.last().name, QStringLiteral("arrow.up.right"));
    }

    void staysInsideItsStripWhenItIsTooNarrow()
    {
        Stage stage(200);
        const QImage image = stage.picture();
        for (int x = 201; x < image.width(); ++x) {
            for (int y = 0; y < image.height(); ++y)
                QCOMPARE(qAlpha(image.pixel(x, y)), 0);
        }
        QSignalSpy accepted(stage.nudge, &AutoHideNudge::accepted);
        stage.click({150, 13});
        QCOMPARE(accepted.size(), 1);
    }
};

MOORLINE_TEST(AutoHideNudgeTest);

#include "AutoHideNudgeTest.moc"
