#include "platform/DisplaySpaces.h"
#include "harness/TestCase.h"

using namespace moorline;

namespace {

const std::optional<qint64> unknown;

QVariantMap space(const QVariant &type)
{
    return {{QStringLiteral("type"), type}};
}

QVariant display(const QVariant &identifier, const QVariant &currentSpace)
{
    return QVariantMap{
        {QStringLiteral("Display Identifier"), identifier}, {QStringLiteral("Current Space"), currentSpace}};
}

DisplaySpace only(const QVariant &display)
{
    const auto spaces = displaySpacesFrom({display});
    return spaces.size() == 1 ? spaces.first() : DisplaySpace{QStringLiteral("not one"), -1};
}

} // namespace

class DisplaySpacesTest final : public test::TestCase {
    Q_OBJECT
private Q_SLOTS:
    void everyDisplayIsKeptInItsOrder()
    {
        const QVariantList displays{display(QStringLiteral("a"), space(0)), QStringLiteral("nonsense"), QVariant(),
            display(QStringLiteral("b"), space(4))};
        const QList<DisplaySpace> expected{{QStringLiteral("a"), 0}, {}, {}, {QStringLiteral("b"), 4}};
        QCOMPARE(displaySpacesFrom(displays), expected);
        QVERIFY(displaySpacesFrom({}).isEmpty());
    }

    void theTypeIsAnInteger_data()
    {
        QTest::addColumn<QVariant>("type");
        QTest::addColumn<std::optional<qint64>>("expected");
        QTest::newRow("int") << QVariant(4) << std::optional<qint64>(4);
        QTest::newRow("64 bits") << QVariant(qint64(4)) << std::optional<qint64>(4);
        QTest::newRow("unsigned") << QVariant(4U) << std::optional<qint64>(4);
        QTest::newRow("none at all") << QVariant() << unknown;
        QTest::newRow("text") << QVariant(QStringLiteral("4")) << unknown;
        QTest::newRow("truth value") << QVariant(true) << unknown;
        QTest::newRow("fraction") << QVariant(4.0) << unknown;
        QTest::newRow("list") << QVariant(QVariantList{4}) << unknown;
    }

    void theTypeIsAnInteger()
    {
        QFETCH(QVariant, type);
        QTEST(only(display(QStringLiteral("a"), space(type))).currentSpaceType, "expected");
    }

    void aSpaceThatIsNoDictionaryHasNoType()
    {
        const QVariant name = QStringLiteral("a");
        QCOMPARE(only(display(name, {})).currentSpaceType, unknown);
        QCOMPARE(only(display(name, QStringLiteral("4"))).currentSpaceType, unknown);
        QCOMPARE(only(display(name, QVariantList{4})).currentSpaceType, unknown);
        QCOMPARE(only(display(name, QVariantMap())).currentSpaceType, unknown);
    }

    void anIdentifierIsAText()
    {
        QCOMPARE(only(display(QStringLiteral("a"), {})).displayIdentifier, QStringLiteral("a"));
        QCOMPARE(only(display(5, space(4))), (DisplaySpace{std::nullopt, 4}));
        QCOMPARE(only(display({}, space(4))), (DisplaySpace{std::nullopt, 4}));
    }
};

MOORLINE_TEST(DisplaySpacesTest);
#include "DisplaySpacesTest.moc"
