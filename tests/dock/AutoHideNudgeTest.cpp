#include "dock/AutoHideNudge.h"

#include "DockFixture.h"
#include "harness/TestCase.h"

#include <QGraphicsScene>
#include <QGraphicsView>
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

    void click(const QPointF &place)
    {
        QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, view.mapFromScene(place));
    }

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
        stage.click({stage.nudge->size().width() - 40, 13});
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
        const qreal width = stage.nudge->size().width();
        QTest::mousePress(stage.view.viewport(), Qt::LeftButton, {}, stage.view.mapFromScene(QPointF(width - 40, 13)));
        QTest::mouseRelease(stage.view.viewport(), Qt::LeftButton, {}, stage.view.mapFromScene(QPointF(40, 13)));
        QCOMPARE(accepted.size(), 0);
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
