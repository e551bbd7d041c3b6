#include "apps/BadgeView.h"

#include "PaintRecorder.h"
#include "harness/TestCase.h"
#include "theme/Text.h"

#include <QPainter>

using namespace moorline;
using namespace moorline::test;

namespace {

/// A badge where an icon would be.
class BadgedIcon final : public QGraphicsWidget {
public:
    explicit BadgedIcon(const QString &text, qreal iconSize = 40)
    {
        badge.setIconSize(iconSize);
        badge.setBadge(text);
        resize(iconSize, iconSize);
    }

    void paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *) override { badge.paint(*painter); }

    BadgeView badge;
};

QString three()
{
    return QStringLiteral("3");
}

} // namespace

class BadgeViewTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void shownIsAFewCharacters_data()
    {
        QTest::addColumn<QString>("badge");
        QTest::addColumn<QString>("shown");
        QTest::newRow("nothing") << QString() << QString();
        QTest::newRow("one") << QStringLiteral("1") << QStringLiteral("1");
        QTest::newRow("999") << QStringLiteral("999") << QStringLiteral("999");
        QTest::newRow("1000") << QStringLiteral("1000") << QStringLiteral("999+");
        QTest::newRow("12345") << QStringLiteral("12345") << QStringLiteral("999+");
        QTest::newRow("more than a number holds") << QStringLiteral("99999999999999999999") << QStringLiteral("999+");
        QTest::newRow("with a sign") << QStringLiteral("+1000") << QStringLiteral("999+");
        QTest::newRow("below zero") << QStringLiteral("-1000") << QStringLiteral("-100");
        QTest::newRow("a small number in zeros") << QStringLiteral("0999") << QStringLiteral("0999");
        QTest::newRow("no whole number") << QStringLiteral("1000.5") << QStringLiteral("1000");
        QTest::newRow("grouped") << QStringLiteral("1,000") << QStringLiteral("1,00");
        QTest::newRow("four letters") << QStringLiteral("beta") << QStringLiteral("beta");
        QTest::newRow("five letters") << QStringLiteral("alpha") << QStringLiteral("alph");
        QTest::newRow("dots") << QStringLiteral("•••••") << QStringLiteral("••••");
        // A family of four is one character.
        QTest::newRow("joined") << QStringLiteral("👨‍👩‍👧‍👦abcd")
                                << QStringLiteral("👨‍👩‍👧‍👦abc");
        QTest::newRow("accents of their own") << QStringLiteral("éabcd") << QStringLiteral("éabc");
    }

    void shownIsAFewCharacters()
    {
        QFETCH(QString, badge);
        QFETCH(QString, shown);
        QCOMPARE(BadgeView::display(badge), shown);
        BadgeView view;
        view.setBadge(badge);
        QCOMPARE(view.text(), shown);
    }

    void theTextIsAShareOfTheIcon_data()
    {
        QTest::addColumn<qreal>("iconSize");
        QTest::addColumn<int>("pixelSize");
        QTest::newRow("smallest icon") << 24.0 << 8;
        QTest::newRow("still the smallest text") << 26.0 << 8;
        QTest::newRow("three tenths") << 40.0 << 12;
        QTest::newRow("largest icon") << 46.0 << 13;
    }

    void theTextIsAShareOfTheIcon()
    {
        QFETCH(qreal, iconSize);
        QFETCH(int, pixelSize);
        BadgedIcon icon(three(), iconSize);
        const PaintRecorder recorder(icon);
        QCOMPARE(recorder.texts.size(), 1);
        QCOMPARE(recorder.texts.first().pixelSize, pixelSize);
        QCOMPARE(recorder.texts.first().weight, 600);
        QCOMPARE(recorder.texts.first().color, QColor(255, 255, 255));
    }

    void digitsStandInCellsOfOneWidth()
    {
        BadgedIcon ones(QStringLiteral("111"));
        BadgedIcon eights(QStringLiteral("888"));
        QCOMPARE(ones.badge.capsule(), eights.badge.capsule());
        // Each is placed by itself, whatever its width is in the font.
        QCOMPARE(PaintRecorder(ones).texts.size(), 3);
    }

    void theCapsuleIsRedWithAWhiteOutline()
    {
        BadgedIcon icon(three());
        QImage image(60, 60, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        painter.translate(10, 10);
        icon.badge.paint(painter);
        const QRectF capsule = icon.badge.capsule().translated(10, 10);
        // Left of the digit; then the middle of the outline, over the red.
        const int middle = qFloor(capsule.center().y());
        QCOMPARE(image.pixelColor(qFloor(capsule.left()) + 3, middle), QColor(255, 59, 48));
        const QColor edge = image.pixelColor(qFloor(capsule.left()), middle);
        QVERIFY2(edge.green() > 170 && edge.blue() > 170, qPrintable(edge.name(QColor::HexArgb)));
    }

    void theShadowIsBlackAndBelow()
    {
        BadgedIcon icon(three());
        QImage image(60, 60, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        painter.translate(10, 10);
        icon.badge.paint(painter);
        const QRectF capsule = icon.badge.capsule().translated(10, 10);
        const int middle = qRound(capsule.center().x());
        const QColor below = image.pixelColor(middle, qRound(capsule.bottom()));
        const QColor above = image.pixelColor(middle, qRound(capsule.top()) - 1);
        QCOMPARE(QColor(below.rgb()), QColor(0, 0, 0));
        QVERIFY2(below.alphaF() > 0.05 && below.alphaF() < 0.35, qPrintable(QString::number(below.alphaF())));
        QVERIFY(below.alpha() > above.alpha());
    }

    void itLiesOverTheTopTrailingCorner_data()
    {
        QTest::addColumn<qreal>("iconSize");
        QTest::newRow("smallest") << 24.0;
        QTest::newRow("between") << 33.0;
        QTest::newRow("largest") << 46.0;
    }

    void itLiesOverTheTopTrailingCorner()
    {
        QFETCH(qreal, iconSize);
        BadgeView badge;
        badge.setIconSize(iconSize);
        badge.setBadge(three());
        const QRectF capsule = badge.capsule();
        QVERIFY(capsule.contains(QPointF(iconSize, 0)));
        // Short of the neighbour, whose icon is six points away.
        QVERIFY(capsule.right() <= iconSize + 5);
        QVERIFY(capsule.top() >= -5);
        QCOMPARE(capsule.width(), capsule.height());
        QVERIFY(badge.boundingRect().contains(capsule));
    }

    void aLongerTextGrowsAwayFromTheCorner()
    {
        BadgedIcon one(three());
        BadgedIcon four(QStringLiteral("1000"));
        QCOMPARE(four.badge.capsule().right(), one.badge.capsule().right());
        QVERIFY(four.badge.capsule().left() < one.badge.capsule().left());
        const qreal text =
            textSize(QStringLiteral("999+"), {.size = 12, .weight = QFont::DemiBold, .monospacedDigits = true}).width();
        QVERIFY(four.badge.capsule().width() > text);
    }

    void withoutABadgeThereIsNothing()
    {
        BadgedIcon icon({});
        QVERIFY(icon.badge.capsule().isNull());
        QVERIFY(icon.badge.boundingRect().isNull());
        const PaintRecorder recorder(icon);
        QVERIFY(recorder.texts.isEmpty());
        QVERIFY(recorder.shapes.isEmpty());
    }

    void nothingIsPaintedOutsideOfWhatItSays_data()
    {
        QTest::addColumn<qreal>("scale");
        QTest::newRow("1") << 1.0;
        QTest::newRow("1.5") << 1.5;
        QTest::newRow("2") << 2.0;
    }

    void nothingIsPaintedOutsideOfWhatItSays()
    {
        QFETCH(qreal, scale);
        BadgedIcon icon(QStringLiteral("888"), 46);
        QImage image(QSizeF(100 * scale, 100 * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        {
            QPainter painter(&image);
            painter.scale(scale, scale);
            painter.translate(30, 30);
            icon.badge.paint(painter);
            painter.setCompositionMode(QPainter::CompositionMode_Clear);
            painter.fillRect(icon.badge.boundingRect().marginsAdded({1, 1, 1, 1}), Qt::black);
        }
        QImage empty = image;
        empty.fill(Qt::transparent);
        QCOMPARE(image, empty);
    }
};

MOORLINE_TEST(BadgeViewTest);
#include "BadgeViewTest.moc"
