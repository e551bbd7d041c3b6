#include "freedesktop/LauncherEntries.h"
#include "harness/TestCase.h"

#include <limits>

namespace {

using moorline::EntryCatalogue;
using moorline::EntryRecord;
using moorline::LauncherEntries;
using moorline::LauncherEntryState;
using Badges = QList<LauncherEntries::Badge>;

const QString first = QStringLiteral(":1.1");
const QString second = QStringLiteral(":1.2");
const QString mail = QStringLiteral("application://mail.desktop");

EntryCatalogue catalogue(const QStringList &ids)
{
    QList<EntryRecord> records;
    for (const QString &id : ids)
        records.append({.path = QStringLiteral("/a/%1.desktop").arg(id), .id = id, .exec = id});
    return EntryCatalogue(records, {}, {});
}

QVariantMap visible(const QVariant &count)
{
    return {{QStringLiteral("count"), count}, {QStringLiteral("count-visible"), true}};
}

/// "path label", in order.
QStringList shown(const LauncherEntries &entries, const QStringList &ids = {QStringLiteral("mail")})
{
    QStringList texts;
    const Badges badges = entries.badges(catalogue(ids));
    for (const auto &badge : badges)
        texts.append(badge.path + u' ' + badge.label);
    return texts;
}

class LauncherEntriesTest : public moorline::test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void aVisibleCountIsABadge();
    void whatIsToldIsMerged();
    void aCountMayBeAnyNumber_data();
    void aCountMayBeAnyNumber();
    void whatIsNoCountChangesNothing_data();
    void whatIsNoCountChangesNothing();
    void theRestIsKept();
    void nonsenseInTheRestChangesNothing();
    void aSenderThatLeavesTakesItsBadgeAlong();
    void theLatestSenderCounts();
    void theOneBeforeReturnsWhenItLeaves();
    void aNameIsAFileFirst_data();
    void aNameIsAFileFirst();
    void twoSpellingsAreOneApplication();
    void anUnknownApplicationWaitsForItsEntry();
    void whatIsNoApplicationIsIgnored_data();
    void whatIsNoApplicationIsIgnored();
    void theLongestSilentIsForgotten();
    void whoeverTellsTooMuchForgetsTheirOwn();
    void whoeverTellsTooMuchOftenStaysWithinTheirOwn();
};

void LauncherEntriesTest::aVisibleCountIsABadge()
{
    LauncherEntries entries;
    QVERIFY(entries.update(first, mail, visible(3)));
    QCOMPARE(shown(entries), QStringList{QStringLiteral("/a/mail.desktop 3")});
}

void LauncherEntriesTest::whatIsToldIsMerged()
{
    LauncherEntries entries;
    entries.update(first, mail, {{QStringLiteral("count"), 3}});
    QVERIFY(shown(entries).isEmpty());
    entries.update(first, mail, {{QStringLiteral("count-visible"), true}});
    QCOMPARE(shown(entries), QStringList{QStringLiteral("/a/mail.desktop 3")});
    entries.update(first, mail, {{QStringLiteral("count"), 0}});
    QVERIFY(shown(entries).isEmpty());
    entries.update(first, mail, {{QStringLiteral("count"), 1}});
    QCOMPARE(shown(entries), QStringList{QStringLiteral("/a/mail.desktop 1")});
    entries.update(first, mail, {{QStringLiteral("count-visible"), false}});
    QVERIFY(shown(entries).isEmpty());
}

void LauncherEntriesTest::aCountMayBeAnyNumber_data()
{
    QTest::addColumn<QVariant>("count");
    QTest::addColumn<QString>("label");
    QTest::newRow("int64") << QVariant(qint64(12)) << QStringLiteral("12");
    QTest::newRow("int32") << QVariant(qint32(12)) << QStringLiteral("12");
    QTest::newRow("int16") << QVariant::fromValue(short(12)) << QStringLiteral("12");
    QTest::newRow("byte") << QVariant::fromValue(uchar(12)) << QStringLiteral("12");
    QTest::newRow("uint16") << QVariant::fromValue(ushort(12)) << QStringLiteral("12");
    QTest::newRow("uint32") << QVariant(quint32(4000000000)) << QStringLiteral("4000000000");
    QTest::newRow("uint64") << QVariant(quint64(12)) << QStringLiteral("12");
    QTest::newRow("double") << QVariant(12.9) << QStringLiteral("12");
    QTest::newRow("one") << QVariant(1) << QStringLiteral("1");
    QTest::newRow("zero") << QVariant(0) << QString();
    QTest::newRow("negative") << QVariant(-4) << QString();
    QTest::newRow("largest") << QVariant(std::numeric_limits<qint64>::max()) << QStringLiteral("9223372036854775807");
    QTest::newRow("beyond") << QVariant(std::numeric_limits<quint64>::max()) << QStringLiteral("9223372036854775807");
    QTest::newRow("smallest") << QVariant(std::numeric_limits<qint64>::min()) << QString();
    QTest::newRow("infinite") << QVariant(std::numeric_limits<double>::infinity())
                              << QStringLiteral("9223372036854775807");
    QTest::newRow("minus infinite") << QVariant(-std::numeric_limits<double>::infinity()) << QString();
    QTest::newRow("two to the 63rd") << QVariant(9223372036854775808.0) << QStringLiteral("9223372036854775807");
}

void LauncherEntriesTest::aCountMayBeAnyNumber()
{
    QFETCH(const QVariant, count);
    QFETCH(const QString, label);
    LauncherEntryState state;
    state.merge(visible(count));
    QCOMPARE(state.badge().value_or(QString()), label);
}

void LauncherEntriesTest::whatIsNoCountChangesNothing_data()
{
    QTest::addColumn<QVariant>("count");
    QTest::newRow("not a number") << QVariant(std::numeric_limits<double>::quiet_NaN());
    QTest::newRow("text") << QVariant(QStringLiteral("7"));
    QTest::newRow("truth") << QVariant(true);
    QTest::newRow("list") << QVariant(QVariantList{7});
    QTest::newRow("nothing") << QVariant();
}

void LauncherEntriesTest::whatIsNoCountChangesNothing()
{
    QFETCH(const QVariant, count);
    LauncherEntryState state;
    state.merge(visible(5));
    state.merge({{QStringLiteral("count"), count}, {QStringLiteral("count-visible"), QStringLiteral("false")}});
    QCOMPARE(state.badge(), QStringLiteral("5"));
}

void LauncherEntriesTest::theRestIsKept()
{
    LauncherEntryState state;
    state.merge({{QStringLiteral("progress"), 0.25}, {QStringLiteral("progress-visible"), true},
        {QStringLiteral("urgent"), true}, {QStringLiteral("updating"), true},
        {QStringLiteral("quicklist"), QStringLiteral("/menu")}});
    QCOMPARE(state,
        (LauncherEntryState{.progress = 0.25,
            .isProgressVisible = true,
            .isUrgent = true,
            .isUpdating = true,
            .quicklist = QStringLiteral("/menu")}));
    QVERIFY(!state.badge());
    state.merge({{QStringLiteral("progress"), 7.0}});
    QCOMPARE(state.progress, 1.0);
    state.merge({{QStringLiteral("progress"), -std::numeric_limits<double>::infinity()}});
    QCOMPARE(state.progress, 0.0);
    state.merge({{QStringLiteral("progress"), 1}});
    QCOMPARE(state.progress, 1.0);
}

void LauncherEntriesTest::nonsenseInTheRestChangesNothing()
{
    LauncherEntryState state;
    state.merge({{QStringLiteral("progress"), 0.5}, {QStringLiteral("quicklist"), QStringLiteral("/menu")}});
    const LauncherEntryState before = state;
    state.merge({{QStringLiteral("progress"), std::numeric_limits<double>::quiet_NaN()}, {QStringLiteral("urgent"), 1},
        {QStringLiteral("progress-visible"), QStringLiteral("yes")}, {QStringLiteral("quicklist"), QString(257, u'x')},
        {QStringLiteral("unknown"), 3}});
    QCOMPARE(state, before);
}

void LauncherEntriesTest::aSenderThatLeavesTakesItsBadgeAlong()
{
    LauncherEntries entries;
    entries.update(first, mail, visible(3));
    QCOMPARE(entries.senders(), QStringList{first});
    entries.removeSender(second);
    QCOMPARE(shown(entries).size(), 1);
    entries.removeSender(first);
    QVERIFY(shown(entries).isEmpty());
    QVERIFY(entries.senders().isEmpty());
}

void LauncherEntriesTest::theLatestSenderCounts()
{
    LauncherEntries entries;
    entries.update(first, mail, visible(3));
    entries.update(second, mail, visible(5));
    QCOMPARE(shown(entries), QStringList{QStringLiteral("/a/mail.desktop 5")});
    entries.update(first, mail, {{QStringLiteral("count"), 4}});
    QCOMPARE(shown(entries), QStringList{QStringLiteral("/a/mail.desktop 4")});
    entries.update(second, mail, {{QStringLiteral("count-visible"), false}});
    QVERIFY(shown(entries).isEmpty());
}

void LauncherEntriesTest::theOneBeforeReturnsWhenItLeaves()
{
    LauncherEntries entries;
    entries.update(first, mail, visible(3));
    entries.update(second, mail, visible(5));
    entries.removeSender(second);
    QCOMPARE(shown(entries), QStringList{QStringLiteral("/a/mail.desktop 3")});
}

void LauncherEntriesTest::aNameIsAFileFirst_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QStringList>("ids");
    QTest::addColumn<QString>("id");
    const auto row = [](const char *title, const char *name, const QStringList &ids, const char *id) {
        QTest::newRow(title) << QString::fromLatin1(name) << ids << QString::fromLatin1(id);
    };
    row("exact", "mail.desktop", {QStringLiteral("mail"), QStringLiteral("mail.desktop")}, "mail");
    row("added", "mail", {QStringLiteral("mail")}, "mail");
    row("ends in it", "org.chat.desktop", {QStringLiteral("org.chat.desktop")}, "org.chat.desktop");
    row("exact before added", "org.chat.desktop", {QStringLiteral("org.chat.desktop"), QStringLiteral("org.chat")},
        "org.chat");
    row("never taken off", "mail.desktop.desktop", {QStringLiteral("mail")}, "");
    row("ignoring case", "Mail.desktop", {QStringLiteral("mail")}, "mail");
    row("added, ignoring case", "MAIL", {QStringLiteral("mail")}, "mail");
    row("case counts first", "Mail.desktop", {QStringLiteral("mail"), QStringLiteral("Mail")}, "Mail");
    row("added before ignoring case", "Mail.desktop", {QStringLiteral("mail"), QStringLiteral("Mail.desktop")},
        "Mail.desktop");
    row("another", "mailer.desktop", {QStringLiteral("mail")}, "");
}

void LauncherEntriesTest::aNameIsAFileFirst()
{
    QFETCH(const QString, name);
    QFETCH(const QStringList, ids);
    QFETCH(const QString, id);
    const EntryCatalogue entries = catalogue(ids);
    const EntryRecord *found = moorline::entryCalled(name, entries);
    QCOMPARE(found ? found->id : QString(), id);
}

void LauncherEntriesTest::twoSpellingsAreOneApplication()
{
    LauncherEntries entries;
    entries.update(first, mail, visible(3));
    entries.update(first, QStringLiteral("application://mail"), visible(4));
    QCOMPARE(shown(entries), QStringList{QStringLiteral("/a/mail.desktop 4")});
}

void LauncherEntriesTest::anUnknownApplicationWaitsForItsEntry()
{
    LauncherEntries entries;
    entries.update(first, mail, visible(3));
    QVERIFY(shown(entries, {QStringLiteral("chat")}).isEmpty());
    QCOMPARE(shown(entries).size(), 1);
}

void LauncherEntriesTest::whatIsNoApplicationIsIgnored_data()
{
    QTest::addColumn<QString>("address");
    QTest::newRow("empty") << QString();
    QTest::newRow("no name") << QStringLiteral("application://");
    QTest::newRow("a file") << QStringLiteral("file:///a/mail.desktop");
    QTest::newRow("a name alone") << QStringLiteral("mail.desktop");
    QTest::newRow("too long") << QStringLiteral("application://") + QString(256, u'x');
}

void LauncherEntriesTest::whatIsNoApplicationIsIgnored()
{
    QFETCH(const QString, address);
    LauncherEntries entries;
    QVERIFY(!entries.update(first, address, visible(3)));
    QVERIFY(entries.senders().isEmpty());
}

void LauncherEntriesTest::theLongestSilentIsForgotten()
{
    LauncherEntries entries;
    entries.update(first, mail, visible(3));
    entries.update(second, QStringLiteral("application://chat.desktop"), visible(7));
    entries.update(first, mail, visible(4));
    for (int i = 0; i < 255; ++i)
        entries.update(QStringLiteral(":1.%1").arg(i + 10), QStringLiteral("application://x"), visible(1));
    const QStringList both{QStringLiteral("mail"), QStringLiteral("chat")};
    QCOMPARE(shown(entries, both), QStringList{QStringLiteral("/a/mail.desktop 4")});
    QCOMPARE(LauncherEntries::maximumStates, 256);
}

void LauncherEntriesTest::whoeverTellsTooMuchForgetsTheirOwn()
{
    LauncherEntries entries;
    QStringList ids;
    entries.update(first, mail, visible(3));
    for (int i = 0; i < 33; ++i) {
        ids.append(QStringLiteral("x-%1").arg(i));
        entries.update(second, QStringLiteral("application://x-%1.desktop").arg(i), visible(i + 1));
    }
    const QStringList badges = shown(entries, QStringList(QStringLiteral("mail")) + ids);
    QCOMPARE(badges.size(), 33);
    QCOMPARE(badges.value(0), QStringLiteral("/a/mail.desktop 3"));
    QCOMPARE(badges.value(1), QStringLiteral("/a/x-1.desktop 2"));
    QCOMPARE(badges.value(32), QStringLiteral("/a/x-32.desktop 33"));
    QCOMPARE(LauncherEntries::maximumStatesOfOne, 32);
}

void LauncherEntriesTest::whoeverTellsTooMuchOftenStaysWithinTheirOwn()
{
    LauncherEntries entries;
    entries.update(first, mail, visible(3));
    for (int i = 0; i < 1000; ++i)
        entries.update(second, QStringLiteral("application://x-%1").arg(i), visible(1));
    QCOMPARE(shown(entries), QStringList{QStringLiteral("/a/mail.desktop 3")});
    // What it told last of an application counts as new.
    LauncherEntries told;
    for (int i = 0; i < 32; ++i)
        told.update(first, QStringLiteral("application://x-%1").arg(i), visible(1));
    told.update(first, QStringLiteral("application://x-0"), visible(2));
    told.update(first, mail, visible(3));
    QCOMPARE(shown(told, {QStringLiteral("x-0"), QStringLiteral("x-1"), QStringLiteral("x-2")}),
        (QStringList{QStringLiteral("/a/x-2.desktop 1"), QStringLiteral("/a/x-0.desktop 2")}));
}

MOORLINE_TEST(LauncherEntriesTest);

} // namespace

#include "LauncherEntriesTest.moc"
