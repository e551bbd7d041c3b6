#include "chrome/PopupPlacement.h"

#include "harness/TestCase.h"

using namespace moorline;
using namespace moorline::test;

class PopupPlacementTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void thePlaceOfAPopup_data()
    {
        QTest::addColumn<QSizeF>("size");
        QTest::addColumn<QRectF>("anchor");
        QTest::addColumn<QRectF>("bar");
        QTest::addColumn<QRectF>("screen");
        QTest::addColumn<QRectF>("frame");
        const QRectF screen(0, 0, 1440, 900);
        const QRectF bar(500, 2, 440, 72);
        const QRectF icon(700, 15, 46, 46);
        QTest::newRow("centred on its anchor, six points above the bar")
            << QSizeF(200, 150) << icon << bar << screen << QRectF(623, 80, 200, 150);
        QTest::newRow("above the nudge as well")
            << QSizeF(200, 150) << icon << QRectF(500, 2, 440, 106) << screen << QRectF(623, 114, 200, 150);
        QTest::newRow("a place without an extent")
            << QSizeF(200, 150) << QRectF(720, 30, 0, 0) << bar << screen << QRectF(620, 80, 200, 150);
        QTest::newRow("on whole points") << QSizeF(201, 150) << QRectF(700.25, 15, 46, 46) << QRectF(500, 2, 440, 71.5)
                                         << screen << QRectF(623, 80, 201, 150);
        QTest::newRow("not over the left edge")
            << QSizeF(200, 150) << QRectF(20, 15, 46, 46) << bar << screen << QRectF(4, 80, 200, 150);
        QTest::newRow("not over the right edge")
            << QSizeF(200, 150) << QRectF(1380, 15, 46, 46) << bar << screen << QRectF(1236, 80, 200, 150);
        QTest::newRow("no higher than the room")
            << QSizeF(200, 2000) << icon << bar << screen << QRectF(623, 80, 200, 816);
        QTest::newRow("no wider than the room")
            << QSizeF(2000, 150) << icon << bar << screen << QRectF(4, 80, 1432, 150);
        QTest::newRow("inside the screen over a bar that is out of sight")
            << QSizeF(200, 150) << QRectF(700, -90, 46, 46) << QRectF(500, -104, 440, 72) << screen
            << QRectF(623, 4, 200, 150);
        QTest::newRow("on a screen at the left of the primary one")
            << QSizeF(200, 150) << QRectF(-1270, -285, 46, 46) << QRectF(-1280, -298, 440, 72)
            << QRectF(-1280, -300, 1280, 800) << QRectF(-1276, -220, 200, 150);
    }

    void thePlaceOfAPopup()
    {
        QFETCH(QSizeF, size);
        QFETCH(QRectF, anchor);
        QFETCH(QRectF, bar);
        QFETCH(QRectF, screen);
        QTEST(popupFrame(size, anchor, bar, screen), "frame");
    }

    void theScreenOfAPlaceIsTheOneItIsOnOrNextTo()
    {
        const Screen left{.frame = {-1280, 0, 1280, 800}, .visibleFrame = {}, .safeAreaInsets = {}};
        const Screen right{.frame = {0, 0, 1440, 900}, .visibleFrame = {}, .safeAreaInsets = {}};
        const QList<Screen> screens{right, left};
        QCOMPARE(screenNearest(screens, {10, 10}), std::optional(right));
        QCOMPARE(screenNearest(screens, {-10, 10}), std::optional(left));
        QCOMPARE(screenNearest(screens, {-900, -50}), std::optional(left));
        QCOMPARE(screenNearest(screens, {2000, 50}), std::optional(right));
        QCOMPARE(screenNearest({}, {0, 0}), std::nullopt);
    }
};

MOORLINE_TEST(PopupPlacementTest);

#include "PopupPlacementTest.moc"
