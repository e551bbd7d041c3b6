#include "theme/IconImage.h"

#include "fakes/FakeIcons.h"
#include "harness/TestCase.h"

#include <QSignalSpy>

namespace moorline::test {

namespace {

const QString notes = QStringLiteral("/Applications/Notes.app");
const QString mail = QStringLiteral("/Applications/Mail.app");

struct Fixture {
    Fixture()
    {
        image.show(IconKind::application, notes, 46);
        changes.clear();
    }

    [[nodiscard]] QColor color(qreal scale = 2)
    {
        const QImage &shown = image.at(scale);
        return shown.isNull() ? QColor() : shown.pixelColor(0, 0);
    }

    FakeIcons icons;
    IconCache cache{icons};
    IconImage image{cache};
    QSignalSpy changes{&image, &IconImage::changed};
};

} // namespace

class IconImageTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void nothingIsAskedBeforeItIsPainted()
    {
        Fixture fixture;
        QVERIFY(fixture.icons.requested.isEmpty());
        QVERIFY(fixture.image.at(2).isNull());
        QCOMPARE(fixture.icons.requested, (QList{IconRequest{IconKind::application, notes, 46, 2}}));
        QVERIFY(fixture.image.at(2).isNull());
        QCOMPARE(fixture.icons.requested.size(), 1);
    }

    void itIsThereWhenItCame()
    {
        Fixture fixture;
        QVERIFY(!fixture.color().isValid());
        QVERIFY(fixture.icons.answer(Qt::red));
        QCOMPARE(fixture.changes.size(), 1);
        QCOMPARE(fixture.color(), QColor(Qt::red));
        QCOMPARE(fixture.image.at(2).size(), QSize(92, 92));
    }

    void whatIsKnownIsThereAtOnce()
    {
        Fixture fixture;
        QVERIFY(!fixture.color().isValid());
        QVERIFY(fixture.icons.answer(Qt::red));
        IconImage second(fixture.cache);
        second.show(IconKind::application, notes, 46);
        QVERIFY(!second.at(2).isNull());
        QCOMPARE(fixture.icons.requested.size(), 1);
    }

    void theOldOneStaysUntilAnotherIsThere_data()
    {
        QTest::addColumn<QString>("subject");
        QTest::addColumn<qreal>("size");
        QTest::addColumn<qreal>("scale");
        QTest::newRow("another size") << notes << 40.0 << 2.0;
        QTest::newRow("another scale") << notes << 46.0 << 1.0;
        QTest::newRow("another application") << mail << 46.0 << 2.0;
    }

    void theOldOneStaysUntilAnotherIsThere()
    {
        QFETCH(QString, subject);
        QFETCH(qreal, size);
        QFETCH(qreal, scale);
        Fixture fixture;
        QVERIFY(!fixture.color().isValid());
        QVERIFY(fixture.icons.answer(Qt::red));
        fixture.image.show(IconKind::application, subject, size);
        QCOMPARE(fixture.color(scale), QColor(Qt::red));
        QCOMPARE(fixture.icons.requested.last(), (IconRequest{IconKind::application, subject, size, scale}));
        QVERIFY(fixture.icons.answer(Qt::green));
        QCOMPARE(fixture.color(scale), QColor(Qt::green));
    }

    void anotherThemeAsksAgain()
    {
        Fixture fixture;
        QVERIFY(!fixture.color().isValid());
        QVERIFY(fixture.icons.answer(Qt::red));
        fixture.changes.clear();
        fixture.icons.changeTheme();
        QCOMPARE(fixture.changes.size(), 1);
        QCOMPARE(fixture.color(), QColor(Qt::red));
        QVERIFY(fixture.icons.answer(Qt::green));
        QCOMPARE(fixture.color(), QColor(Qt::green));
    }

    void whatIsNotShownAnyMoreIsNotWaitedFor()
    {
        Fixture fixture;
        QVERIFY(!fixture.color().isValid());
        fixture.image.show(IconKind::application, mail, 46);
        QVERIFY(!fixture.color().isValid());
        QCOMPARE(fixture.icons.running(), 1);
        QVERIFY(fixture.icons.answer(Qt::green));
        QCOMPARE(fixture.color(), QColor(Qt::green));
        QCOMPARE(fixture.icons.running(), 0);
    }

    void whatThereIsNotIsNothing()
    {
        Fixture fixture;
        QVERIFY(!fixture.color().isValid());
        QVERIFY(fixture.icons.miss());
        QVERIFY(!fixture.color().isValid());
        QCOMPARE(fixture.icons.requested.size(), 1);
    }

    void theSameIsNothingNew()
    {
        Fixture fixture;
        QVERIFY(!fixture.color().isValid());
        QVERIFY(fixture.icons.answer(Qt::red));
        fixture.changes.clear();
        fixture.image.show(IconKind::application, notes, 46);
        QCOMPARE(fixture.changes.size(), 0);
        QCOMPARE(fixture.color(2 + 1e-15), QColor(Qt::red));
        QCOMPARE(fixture.icons.requested.size(), 1);
    }
};

MOORLINE_TEST(IconImageTest);

} // namespace moorline::test

#include "IconImageTest.moc"
