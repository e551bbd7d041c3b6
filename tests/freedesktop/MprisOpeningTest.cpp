#include "freedesktop/MprisOpening.h"
#include "harness/TestCase.h"

using namespace moorline;
using Opening = std::optional<MprisOpening>;
using Applications = QList<WindowedApplication>;

namespace {

const QString path = QStringLiteral("/applications/player.desktop");
const QString otherPath = QStringLiteral("/applications/other.desktop");

Opening activated(qsizetype application)
{
    return OpenByActivation{application};
}

} // namespace

class MprisOpeningTest final : public test::TestCase {
    Q_OBJECT
private Q_SLOTS:
    void itsWindowsComeFirst_data()
    {
        QTest::addColumn<MprisOrigin>("player");
        QTest::addColumn<Applications>("applications");
        QTest::addColumn<qsizetype>("application");
        const auto row = [](const char *what, const MprisOrigin &player, const Applications &applications,
                             qsizetype application) { QTest::newRow(what) << player << applications << application; };
        const WindowedApplication other{.entryPath = otherPath, .process = 7};
        const MprisOrigin byEntry{.entryPath = path};
        const MprisOrigin byBoth{.entryPath = path, .process = 42};
        row("of its entry", byEntry, {other, {.entryPath = path, .process = 8}}, 1);
        row("the first of its entry", byEntry, {other, {.entryPath = path}, {.entryPath = path}}, 1);
        row("of its process", {.process = 42}, {other, {.process = 42}}, 1);
        row("of its process with another entry", byBoth, {other, {.entryPath = otherPath, .process = 42}}, 1);
        row("of its entry and process", byBoth,
            {{.entryPath = path}, {.process = 42}, {.entryPath = path, .process = 42}}, 2);
        row("of its entry before its process", byBoth, {{.process = 42}, {.entryPath = path, .process = 8}}, 1);
        row("not of one that ended", byEntry, {{.entryPath = path, .isTerminated = true}, {.entryPath = path}}, 1);
    }
    void itsWindowsComeFirst()
    {
        QFETCH(MprisOrigin, player);
        QFETCH(const Applications, applications);
        QFETCH(const qsizetype, application);
        QCOMPARE(mprisOpening(player, applications), activated(application));
        player.canRaise = true;
        QCOMPARE(mprisOpening(player, applications), activated(application));
    }

    void whatIsNotKnownOfBothIsNotTheSame()
    {
        QCOMPARE(mprisOpening({}, {{}}), Opening());
        QCOMPARE(mprisOpening({.canRaise = true}, {{}}), Opening(OpenByRaise{}));
    }

    void withoutWindowsItIsAskedToShowItself()
    {
        const MprisOrigin player{.entryPath = path, .process = 42, .canRaise = true};
        QCOMPARE(mprisOpening(player, {}), Opening(OpenByRaise{}));
        QCOMPARE(mprisOpening(player, {{.entryPath = otherPath, .process = 7}}), Opening(OpenByRaise{}));
        QCOMPARE(
            mprisOpening(player, {{.entryPath = path, .process = 42, .isTerminated = true}}), Opening(OpenByRaise{}));
    }

    void oneThatCannotIsStarted()
    {
        QCOMPARE(
            mprisOpening({.entryPath = path, .process = 42}, {{.entryPath = otherPath}}), Opening(OpenByLaunch{path}));
    }

    void withoutAnEntryThereIsNothingToStart() { QCOMPARE(mprisOpening({.process = 42}, {{.process = 7}}), Opening()); }

    void anEntryIsNamedByItsIdOrItsFile()
    {
        const QString id = QStringLiteral("org.a.player");
        const QString file = QStringLiteral("org.a.player.desktop");
        QCOMPARE(mprisEntryIds(id), QStringList{id});
        QCOMPARE(mprisEntryIds(file), (QStringList{file, id}));
        QCOMPARE(mprisEntryIds(QStringLiteral(".desktop")), QStringList{QStringLiteral(".desktop")});
        QCOMPARE(mprisEntryIds({}), QStringList());
    }
};

MOORLINE_TEST(MprisOpeningTest);
#include "MprisOpeningTest.moc"
