#include "IconsFixture.h"
#include "PaintRecorder.h"
#include "harness/TestCase.h"

#include <QPaintEvent>

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

namespace {

struct Fixture : IconsFixture {
    Fixture()
        : button(new AppShortcutButton(context(), notes, true))
    {
        button->setPos(60, 20);
        hand.scene.addItem(button);
    }

    /// What is painted at this scale, its own icon included, with room for what reaches beyond it.
    [[nodiscard]] QImage painted(qreal scale)
    {
        QImage image(QSize(qRound(70 * scale), qRound(76 * scale)), QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(scale);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        painter.translate(12, 12);
        button->paint(&painter, nullptr, nullptr);
        return image;
    }

    /// A picture in which every pixel differs from its neighbours.
    [[nodiscard]] static QImage noise(int side, qreal scale)
    {
        QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(scale);
        for (int y = 0; y < side; ++y) {
            for (int x = 0; x < side; ++x)
                image.setPixel(x, y, (x + y) % 2 ? qRgb(255, 255, 255) : qRgb(x * 4 % 256, y * 4 % 256, 0));
        }
        return image;
    }

    Hand hand;
    AppShortcutButton *button;
};

/// Where a view was painted since it was last asked.
class PaintedPlaces final : public QObject {
public:
    explicit PaintedPlaces(Hand &hand)
    {
        QCoreApplication::processEvents();
        hand.scene.views().first()->viewport()->installEventFilter(this);
    }

    [[nodiscard]] QRect take() { return std::exchange(m_painted, QRect()); }

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            m_painted |= static_cast<QPaintEvent *>(event)->region().boundingRect();
        return false;
    }

private:
    QRect m_painted;
};

} // namespace

/// What is painted of an application in the bar.
class AppIconTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void anIconIsAskedForAtItsSizeAndScale_data()
    {
        QTest::addColumn<qreal>("scale");
        QTest::newRow("1") << 1.0;
        QTest::newRow("1.5") << 1.5;
        QTest::newRow("2") << 2.0;
    }

    void anIconIsAskedForAtItsSizeAndScale()
    {
        QFETCH(qreal, scale);
        Fixture fixture;
        fixture.button->setIconSize(40);
        QVERIFY(!fixture.painted(scale).isNull());
        QCOMPARE(fixture.platform.icons.requested,
            (QList{IconRequest{IconKind::application, fixture.notes.path, 40, scale}}));
    }

    void atRestItIsPaintedPixelForPixel_data()
    {
        QTest::addColumn<qreal>("scale");
        QTest::addColumn<int>("side");
        QTest::newRow("1") << 1.0 << 46;
        QTest::newRow("1.25, which is no whole number of pixels") << 1.25 << 58;
        QTest::newRow("1.5") << 1.5 << 69;
        QTest::newRow("2") << 2.0 << 92;
    }

    void atRestItIsPaintedPixelForPixel()
    {
        QFETCH(qreal, scale);
        QFETCH(int, side);
        Fixture fixture;
        QVERIFY(!fixture.painted(scale).isNull());
        const QImage icon = Fixture::noise(side, scale);
        QVERIFY(fixture.platform.icons.answer(icon));
        QImage seen = fixture.painted(scale);
        seen.setDevicePixelRatio(1);
        QImage expected = icon;
        expected.setDevicePixelRatio(1);
        const int corner = qRound(12 * scale);
        QCOMPARE(seen.copy(corner, corner, side, side), expected);
    }

    void untilItCameThereIsNothing()
    {
        Fixture fixture;
        QImage empty = fixture.painted(1);
        empty.fill(Qt::transparent);
        QCOMPARE(fixture.painted(1), empty);
    }

    void theGrownIconGrowsAroundItsMiddle()
    {
        Fixture fixture;
        QVERIFY(!fixture.painted(1).isNull());
        QVERIFY(fixture.platform.icons.answer(Qt::red));
        fixture.hand.move({80, 40});
        fixture.platform.clock.advance(1s);
        QCOMPARE(fixture.button->iconScale(), 1.08);
        // 46 points at 1.08: 1.84 points more on every side.
        const QImage image = fixture.painted(2);
        const auto alpha = [&](qreal x, qreal y) {
            return image.pixelColor(qFloor((12 + x) * 2), qFloor((12 + y) * 2)).alpha();
        };
        QCOMPARE(alpha(-1.5, 23), 255);
        QCOMPARE(alpha(-2.5, 23), 0);
        QCOMPARE(alpha(47, 23), 255);
        QCOMPARE(alpha(48, 23), 0);
        QCOMPARE(alpha(23, -1.5), 255);
        QCOMPARE(alpha(23, 47), 255);
    }

    void hoverGrowsAndShrinksOnASpring()
    {
        Fixture fixture;
        fixture.hand.move({80, 40});
        const Spring spring{.response = 0.25, .damping = 0.7};
        for (int step = 1; step <= 5; ++step) {
            fixture.platform.clock.advance(16ms);
            QVERIFY(std::abs(fixture.button->iconScale() - (1 + 0.08 * spring.valueAt(step * 0.016))) < 1e-9);
        }
        fixture.hand.move({200, 40});
        fixture.platform.clock.advance(1s);
        QCOMPARE(fixture.button->iconScale(), 1.0);
    }

    void atRestNothingIsPaintedAndNoTimeIsKept()
    {
        Fixture fixture;
        const auto timers = fixture.platform.clock.runningTimers();
        PaintedPlaces places(fixture.hand);
        fixture.platform.clock.advance(60s);
        QCoreApplication::processEvents();
        QVERIFY(places.take().isEmpty());
        QCOMPARE(fixture.platform.clock.runningTimers(), timers);
    }

    void whileItGrowsOnlyTheIconIsPainted()
    {
        Fixture fixture;
        PaintedPlaces places(fixture.hand);
        fixture.hand.move({80, 40});
        for (int step = 0; step < 30; ++step) {
            fixture.platform.clock.advance(16ms);
            QCoreApplication::processEvents();
        }
        // A fifth more than the icon, around its middle, and what Qt adds for what lies between pixels.
        const QRect painted = places.take();
        QVERIFY(!painted.isEmpty());
        QVERIFY2(QRectF(60 - 4.6, 20 - 4.6, 55.2, 55.2).adjusted(-3, -3, 3, 3).contains(painted),
            qPrintable(QDebug::toString(painted)));
    }

    void theDotIsThereWhileTheApplicationRuns_data()
    {
        QTest::addColumn<qreal>("iconSize");
        QTest::newRow("largest") << 46.0;
        QTest::newRow("smallest") << 24.0;
    }

    void theDotIsThereWhileTheApplicationRuns()
    {
        QFETCH(qreal, iconSize);
        Fixture fixture;
        fixture.button->setIconSize(iconSize);
        QCOMPARE(PaintRecorder(*fixture.button).shapes.size(), 0);
        const QSizeF without = fixture.button->size();
        fixture.run(fixture.notes);
        const auto shapes = PaintRecorder(*fixture.button).shapes;
        QCOMPARE(shapes.size(), 1);
        QCOMPARE(shapes.first().bounds, QRectF(std::round((iconSize - 3) / 2), iconSize + 3, 3, 3));
        QCOMPARE(shapes.first().color.rgba(), QColor::fromRgbF(1, 1, 1, 0.55F).rgba());
        QCOMPARE(fixture.button->size(), without);
    }

    void theDotAlonePaintsItself()
    {
        Fixture fixture;
        PaintedPlaces places(fixture.hand);
        fixture.run(fixture.notes);
        QCoreApplication::processEvents();
        const QRect painted = places.take();
        QVERIFY2(QRect(79, 67, 8, 8).contains(painted) && !painted.isEmpty(), qPrintable(QDebug::toString(painted)));
    }

    void whatChangesNothingThatIsShownPaintsNothing()
    {
        Fixture fixture;
        fixture.run(fixture.notes);
        PaintedPlaces places(fixture.hand);
        fixture.run(fixture.mail);
        fixture.setBadges({{fixture.mail.path, QStringLiteral("7")}});
        fixture.platform.appBundles.change();
        QCoreApplication::processEvents();
        QVERIFY(places.take().isEmpty());
    }

    void theBadgeIsPaintedOverTheIcon()
    {
        Fixture fixture;
        fixture.setBadges({{fixture.notes.path, QStringLiteral("1000")}});
        const auto texts = PaintRecorder(*fixture.button).texts;
        QCOMPARE(joined(texts), QStringLiteral("999+"));
        QVERIFY(areAll(texts, 600, Qt::white));
    }

    void everythingPaintedIsWithinItsBounds()
    {
        Fixture fixture;
        fixture.setBadges({{fixture.notes.path, QStringLiteral("WWWW")}});
        fixture.run(fixture.notes);
        const QRectF bounds = fixture.button->boundingRect();
        for (const PaintedShape &shape : PaintRecorder(*fixture.button).shapes)
            QVERIFY(bounds.contains(shape.bounds));
    }
};

MOORLINE_TEST(AppIconTest);
#include "AppIconTest.moc"
