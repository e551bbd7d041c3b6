#include "platform/linux/x11/X11Coordinates.h"
#include "harness/TestCase.h"

namespace {

using moorline::X11Coordinates;

const X11Coordinates::Screen plain{{0, 0, 1440, 900}, 1};
const X11Coordinates::Screen fine{{0, 0, 1440, 900}, 2};

class X11CoordinatesTest final : public moorline::test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void aPointCountsFromTheBottomLeft()
    {
        QCOMPARE(X11Coordinates({plain}).pointFromNative({100, 890}), QPointF(100, 10));
    }

    void atScaleTwoAPointIsTwoPixels()
    {
        QCOMPARE(X11Coordinates({fine}).pointFromNative({100, 1790}), QPointF(50, 5));
        QCOMPARE(X11Coordinates({fine}).windowBoundsFromNative({200, 100, 600, 400}), QRectF(100, 50, 300, 200));
        QCOMPARE(X11Coordinates({fine}).nativeFromFrame({10, -11, 160, 98}), QRect(20, 1626, 320, 196));
        QCOMPARE(X11Coordinates({fine}).nativePrimary(), QRect(0, 0, 2880, 1800));
    }

    void thePrimaryScreenIsTheOriginWhereverItStands()
    {
        const X11Coordinates coordinates({{{1920, 200, 1440, 900}, 1}, {{0, 0, 1920, 1080}, 1}});
        QCOMPARE(coordinates.pointFromNative({1920, 1100}), QPointF(0, 0));
        QCOMPARE(coordinates.pointFromNative({0, 0}), QPointF(-1920, 1100));
        QCOMPARE(coordinates.windowBoundsFromNative({1930, 210, 50, 40}), QRectF(10, 10, 50, 40));
        QCOMPARE(coordinates.qtFromFrame({0, 0, 100, 98}), QRectF(1920, 1002, 100, 98));
        QCOMPARE(coordinates.nativeFromFrame({0, 0, 100, 98}), QRect(1920, 1002, 100, 98));
    }

    void everyScreenHasItsOwnScale()
    {
        const X11Coordinates coordinates({plain, {{1440, 0, 1280, 720}, 2}});
        QCOMPARE(coordinates.pointFromNative({1440 + 200, 100}), QPointF(1440 + 100, 900 - 50));
        QCOMPARE(coordinates.windowBoundsFromNative({1540, 20, 400, 200}), QRectF(1490, 10, 200, 100));
    }

    void aFrameComesBackAsItWas()
    {
        const X11Coordinates coordinates({{{1920, 200, 1440, 900}, 2}});
        const QRectF frame(640, -11, 160, 98);
        QCOMPARE(coordinates.frameFromQt(coordinates.qtFromFrame(frame)), frame);
    }

    void withoutScreensNothingFails()
    {
        const X11Coordinates coordinates({});
        QCOMPARE(coordinates.primaryScale(), 1.0);
        QVERIFY(coordinates.nativePrimary().isEmpty());
        QCOMPARE(coordinates.frameFromQt(coordinates.qtFromFrame({1, 2, 3, 4})), QRectF(1, 2, 3, 4));
        QCOMPARE(coordinates.pointFromNative({5, 6}).x(), 5.0);
    }
};

MOORLINE_TEST(X11CoordinatesTest);

} // namespace

#include "X11CoordinatesTest.moc"
