#include "support/JsonFields.h"
#include "harness/TestCase.h"

#include <cmath>

using namespace moorline;

namespace {

constexpr qint64 largest = std::numeric_limits<qint64>::max();
constexpr qint64 smallest = std::numeric_limits<qint64>::min();
/// Up to here every integer is a double of its own.
constexpr qint64 largestExact = 9007199254740992;

QJsonArray listOfLength(qsizetype length)
{
    QJsonArray list;
    while (list.size() < length)
        list.append(1);
    return list;
}

QList<QJsonValue> oneOfEachType()
{
    return {QJsonValue(), QJsonValue(QJsonValue::Undefined), true, 1.5, QStringLiteral("text"), QJsonArray{1},
        QJsonObject{{QStringLiteral("a"), 1}}};
}

/// The values of the list that `read` takes.
template <typename Read>
QList<QJsonValue> taken(Read read)
{
    QList<QJsonValue> values;
    for (const QJsonValue &value : oneOfEachType()) {
        if (read(value).has_value())
            values.append(value);
    }
    return values;
}

} // namespace

class JsonFieldsTest final : public test::TestCase {
    Q_OBJECT
private Q_SLOTS:
    void everyReaderTakesItsTypeAlone()
    {
        using List = QList<QJsonValue>;
        QCOMPARE(taken(json::flag), List{true});
        QCOMPARE(taken([](const QJsonValue &value) { return json::number(value); }), List{1.5});
        QCOMPARE(taken([](const QJsonValue &value) { return json::integer(value, ownLimits); }), List());
        QCOMPARE(
            taken([](const QJsonValue &value) { return json::text(value, ownLimits); }), List{QStringLiteral("text")});
        QCOMPARE(taken([](const QJsonValue &value) { return json::list(value, ownLimits); }), List{QJsonArray{1}});
        QCOMPARE(taken(json::object), (List{QJsonObject{{QStringLiteral("a"), 1}}}));
    }

    void integersReachAsFarAsTheirLimits()
    {
        QCOMPARE(json::integer(largest, ownLimits), std::optional(largest));
        QCOMPARE(json::integer(smallest, ownLimits), std::optional(smallest));
        QCOMPARE(json::integer(largestExact, strangersLimits), std::optional(largestExact));
        QCOMPARE(json::integer(-largestExact, strangersLimits), std::optional(-largestExact));
        QVERIFY(!json::integer(largestExact + 1, strangersLimits));
        QVERIFY(!json::integer(-largestExact - 1, strangersLimits));
        QVERIFY(!json::integer(1e300, ownLimits));
        QVERIFY(!json::integer(2.5, ownLimits));
        QCOMPARE(json::integer(5.0, ownLimits), std::optional(qint64(5)));
    }

    void numbersReachAsFarAsTheirLimit()
    {
        QCOMPARE(json::number(90, 90), std::optional(90.0));
        QCOMPARE(json::number(-90, 90), std::optional(-90.0));
        QVERIFY(!json::number(90.1, 90));
        QVERIFY(!json::number(-90.1, 90));
        QCOMPARE(json::number(1e308), std::optional(1e308));
        QVERIFY(!json::number(std::nan("")));
        QVERIFY(!json::number(-std::numeric_limits<double>::infinity()));
    }

    void textsAndListsOfStrangersAreShort()
    {
        QVERIFY(json::text(QString(256, u'x'), strangersLimits));
        QVERIFY(!json::text(QString(257, u'x'), strangersLimits));
        QVERIFY(json::text(QString(100'000, u'x'), ownLimits));
        QVERIFY(json::list(listOfLength(64), strangersLimits));
        QVERIFY(!json::list(listOfLength(65), strangersLimits));
        QVERIFY(json::list(listOfLength(100'000), ownLimits));
    }

    void aListIsReadWholeOrNotAtAll()
    {
        const auto read = [](const QJsonValue &value) { return json::flag(value); };
        QCOMPARE(json::listOf<bool>(QJsonArray{true, false}, ownLimits, read), std::optional(QList{true, false}));
        QCOMPARE(json::listOf<bool>(QJsonArray(), ownLimits, read), std::optional(QList<bool>()));
        QVERIFY(!json::listOf<bool>(QJsonArray{true, 1}, ownLimits, read));
        QVERIFY(!json::listOf<bool>(QJsonValue(), ownLimits, read));
    }

    void aRecordTellsItsFirstUnreadableField()
    {
        JsonFields fields({{QStringLiteral("a"), 1}, {QStringLiteral("b"), true}, {QStringLiteral("c"), true}});
        QCOMPARE(fields.integer(QLatin1StringView("a")), 1);
        QVERIFY(fields.isReadable());
        QVERIFY(!fields.optionalText(QLatin1StringView("b")));
        QVERIFY(!fields.optionalText(QLatin1StringView("c")));
        QVERIFY(!fields.isReadable());
        QCOMPARE(fields.unreadableField(), QStringLiteral("b"));
    }

    void whatIsMissingOrNullIsMissedOnlyWhereItIsRequired()
    {
        JsonFields fields({{QStringLiteral("a"), QJsonValue::Null}});
        QVERIFY(!fields.optionalText(QLatin1StringView("a")));
        QVERIFY(!fields.optionalNumber(QLatin1StringView("b")));
        QVERIFY(fields.isReadable());
        QCOMPARE(fields.text(QLatin1StringView("a")), QString());
        QVERIFY(!fields.isReadable());
        JsonFields others(QJsonObject{});
        QCOMPARE(others.number(QLatin1StringView("b")), 0.0);
        QVERIFY(!others.isReadable());
    }

    void aRecordIsAsLongAsItsLimitsAllow()
    {
        const QJsonObject object{{QStringLiteral("a"), QString(257, u'x')}};
        JsonFields strangers(object);
        QVERIFY(!strangers.optionalText(QLatin1StringView("a")));
        JsonFields own(object, ownLimits);
        QCOMPARE(own.text(QLatin1StringView("a")).size(), 257);
    }
};

MOORLINE_TEST(JsonFieldsTest);
#include "JsonFieldsTest.moc"
