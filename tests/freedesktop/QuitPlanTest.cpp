#include "freedesktop/QuitPlan.h"
#include "harness/TestCase.h"

using namespace moorline;

namespace {

const QList<EntryAction> newWindow{{.id = QStringLiteral("new-window")}};

} // namespace

class QuitPlanTest final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void theActionQuitComesFirst();
    void theExportedActionComesNext();
    void elseWindowsAreClosed();
    void windowsThatCannotBeAskedAreLeftAlone();
    void whatHasAWayCanBeAsked();
    void whatHasNoWayCannotBeAsked();
    void theNextWayIsTriedWhereNobodyHeard_data();
    void theNextWayIsTriedWhereNobodyHeard();
};

void QuitPlanTest::theActionQuitComesFirst()
{
    const QList<EntryAction> actions{{.id = QStringLiteral("quit-all")}, {.id = QStringLiteral("Quit")}};
    QCOMPARE(planQuit(actions, true, {1}, {1}), QuitPlan(QuitByEntryAction{QStringLiteral("Quit")}));
    QCOMPARE(quitActionOf(actions), QStringLiteral("Quit"));
    QVERIFY(!quitActionOf({{.id = QStringLiteral("new-window")}, {.id = QStringLiteral("quit-all")}}));
}

void QuitPlanTest::theExportedActionComesNext()
{
    QCOMPARE(planQuit({{.id = QStringLiteral("new-window")}}, true, {1}, {1}), QuitPlan(QuitByExportedAction{}));
}

void QuitPlanTest::elseWindowsAreClosed()
{
    QCOMPARE(planQuit({}, false, {1, 2}, {2, 1}), QuitPlan(QuitByClosing{{1, 2}}));
}

void QuitPlanTest::windowsThatCannotBeAskedAreLeftAlone()
{
    QCOMPARE(planQuit({}, false, {1, 2}, {2, 3}), QuitPlan(QuitByClosing{{2}}));
}

void QuitPlanTest::whatHasAWayCanBeAsked()
{
    QVERIFY(canBeAskedToQuit({{.id = QStringLiteral("QUIT")}}, {}));
    QVERIFY(canBeAskedToQuit({}, {QuitOffer(), {.isClosable = true}}));
    QVERIFY(canBeAskedToQuit(newWindow, {{.hasActions = true}}));
}

void QuitPlanTest::whatHasNoWayCannotBeAsked()
{
    QVERIFY(!canBeAskedToQuit(newWindow, {QuitOffer(), QuitOffer()}));
    QVERIFY(!canBeAskedToQuit({}, {}));
}

void QuitPlanTest::theNextWayIsTriedWhereNobodyHeard_data()
{
    QTest::addColumn<QString>("error");
    QTest::addColumn<bool>("isUnheard");
    const QString standard = QStringLiteral("org.freedesktop.DBus.Error.");
    QTest::newRow("no service") << standard + QStringLiteral("ServiceUnknown") << true;
    QTest::newRow("it does not start") << standard + QStringLiteral("Spawn.ExecFailed") << true;
    QTest::newRow("no object") << standard + QStringLiteral("UnknownObject") << true;
    QTest::newRow("the bus went") << standard + QStringLiteral("Disconnected") << true;
    QTest::newRow("no answer") << standard + QStringLiteral("NoReply") << true;
    QTest::newRow("too late") << standard + QStringLiteral("Timeout") << true;
    QTest::newRow("too late by another name") << standard + QStringLiteral("TimedOut") << true;
    QTest::newRow("refused") << standard + QStringLiteral("AccessDenied") << false;
    QTest::newRow("its own error") << QStringLiteral("org.example.Error.Unsaved") << false;
    QTest::newRow("anybody's silence") << QStringLiteral("org.example.Error.NoReply") << false;
}

void QuitPlanTest::theNextWayIsTriedWhereNobodyHeard()
{
    QFETCH(QString, error);
    QTEST(isQuitUnheard(error), "isUnheard");
}

MOORLINE_TEST(QuitPlanTest);

#include "QuitPlanTest.moc"
