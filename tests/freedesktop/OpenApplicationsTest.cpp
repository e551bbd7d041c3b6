#include "freedesktop/OpenApplications.h"
#include "freedesktop/WindowIdentities.h"
#include "harness/TestCase.h"

namespace {

using moorline::EntryRecord;
using moorline::OpenApplication;
using moorline::openApplications;
using moorline::ProcessFacts;
using moorline::WindowFacts;
using moorline::WindowIdentities;
using moorline::XWindowId;

QString text(const char *latin)
{
    return QString::fromLatin1(latin);
}

WindowFacts window(XWindowId id, const char *windowClass, std::optional<qint64> process = std::nullopt)
{
    return {.window = id, .className = text(windowClass), .process = process};
}

class OpenApplicationsTest : public moorline::test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void init();

    void windowsOfOneEntryAreOneApplication();
    void applicationsComeInTheOrderOfTheirFirstWindows();
    void theProcessIsKnownWhereThereIsOne();
    void onlySomeWindowsAreATaskbars();
    void windowsWithoutAnEntryAreOneForEachProcess();
    void windowsWithoutAProcessAreOneForEachClass();

    void aWindowIsMatchedOnce();
    void aWindowIsMatchedAgainWhenItSaysSomethingElse_data();
    void aWindowIsMatchedAgainWhenItSaysSomethingElse();
    void allAreMatchedAgainWhenEntriesChange();
    void aWindowThatCameBackIsMatchedAgain();
    void whatIsLearntOfAProcessCountsWhenItIsTold();
    void aDialogBelongsToItsOwner();
    void aDialogThatSaysSomethingIsItsOwn();
    void aWindowOfAnotherMachineHasNoProcess();
    void aWindowIsUndecidedUntilItsProcessIsKnown();

private:
    const ProcessFacts *lookUp(qint64 process);
    QHash<XWindowId, QString> identify(const QList<WindowFacts> &windows);

    WindowIdentities m_identities;
    QList<qint64> m_asked;
    ProcessFacts m_process;
};

void OpenApplicationsTest::init()
{
    TestCase::init();
    m_identities = {};
    m_identities.setMatcher(std::make_shared<moorline::WindowMatcher>(
        QList<moorline::EntryRecord>{{.path = text("/paint.desktop"), .id = text("paint"), .exec = text("paint")},
            {.path = text("/write.desktop"), .id = text("write"), .exec = text("write")}}));
    m_asked.clear();
    m_process = {.process = 700, .executable = text("/usr/bin/paint"), .command = {text("paint")}};
}

const ProcessFacts *OpenApplicationsTest::lookUp(qint64 process)
{
    m_asked.append(process);
    return process == m_process.process ? &m_process : nullptr;
}

QHash<XWindowId, QString> OpenApplicationsTest::identify(const QList<WindowFacts> &windows)
{
    return m_identities.identify(windows, [this](qint64 process) { return lookUp(process); });
}

void OpenApplicationsTest::windowsOfOneEntryAreOneApplication()
{
    const QList<OpenApplication> open = openApplications(
        {window(1, "a"), window(2, "b"), window(3, "c")}, {{1, text("paint")}, {2, text("write")}, {3, text("paint")}});
    QCOMPARE(open.size(), 2);
    QCOMPARE(open[0].entry, text("paint"));
    QCOMPARE(open[0].windows, (QList<XWindowId>{1, 3}));
    QCOMPARE(open[1].entry, text("write"));
    QCOMPARE(open[1].windows, QList<XWindowId>{2});
}

void OpenApplicationsTest::applicationsComeInTheOrderOfTheirFirstWindows()
{
    const QList<OpenApplication> open =
        openApplications({window(9, "b"), window(2, "a")}, {{2, text("paint")}, {9, text("write")}});
    QCOMPARE(open.size(), 2);
    QCOMPARE(open[0].entry, text("write"));
    QCOMPARE(open[1].entry, text("paint"));
}

void OpenApplicationsTest::theProcessIsKnownWhereThereIsOne()
{
    const QHash<XWindowId, QString> paint{{1, text("paint")}, {2, text("paint")}};
    QCOMPARE(openApplications({window(1, "a", 7), window(2, "a", 7)}, paint).first().process, 7);
    QVERIFY(!openApplications({window(1, "a", 7), window(2, "a", 8)}, paint).first().process);
    QVERIFY(!openApplications({window(1, "a"), window(2, "a", 8)}, paint).first().process);
}

void OpenApplicationsTest::onlySomeWindowsAreATaskbars()
{
    WindowFacts tool = window(1, "a");
    tool.isOrdinary = false;
    const QHash<XWindowId, QString> paint{{1, text("paint")}, {2, text("paint")}};
    const QList<OpenApplication> open = openApplications({tool, window(2, "a")}, paint);
    QCOMPARE(open.first().windows, (QList<XWindowId>{1, 2}));
    QCOMPARE(open.first().taskbarWindows, QList<XWindowId>{2});
}

void OpenApplicationsTest::windowsWithoutAnEntryAreOneForEachProcess()
{
    const QList<OpenApplication> open = openApplications({window(1, "a", 7), window(2, "a", 8), window(3, "b", 7)}, {});
    QCOMPARE(open.size(), 2);
    QVERIFY(!open[0].entry);
    QCOMPARE(open[0].windows, (QList<XWindowId>{1, 3}));
    QCOMPARE(open[0].process, 7);
    QCOMPARE(open[1].windows, QList<XWindowId>{2});
}

void OpenApplicationsTest::windowsWithoutAProcessAreOneForEachClass()
{
    const QList<OpenApplication> open =
        openApplications({window(1, "a"), window(2, "b"), window(3, "a"), window(4, ""), window(5, "")}, {});
    QCOMPARE(open.size(), 4);
    QCOMPARE(open[0].windows, (QList<XWindowId>{1, 3}));
    QCOMPARE(open[3].windows, QList<XWindowId>{5});
}

void OpenApplicationsTest::aWindowIsMatchedOnce()
{
    QCOMPARE(identify({window(1, "odd", 700)}).value(1), text("paint"));
    m_process.executable = text("/usr/bin/write");
    m_process.command = {text("write")};
    WindowFacts moved = window(1, "odd", 700);
    moved.isMinimised = true;
    moved.desktop = 2;
    QCOMPARE(identify({moved}).value(1), text("paint"));
    QCOMPARE(m_asked, QList<qint64>{700});
}

void OpenApplicationsTest::aWindowIsMatchedAgainWhenItSaysSomethingElse_data()
{
    QTest::addColumn<QString>("instance");
    QTest::addColumn<QString>("windowClass");
    QTest::addColumn<QString>("applicationId");
    QTest::addColumn<qint64>("process");
    QTest::newRow("instance") << text("write") << text("odd") << QString() << qint64(1);
    QTest::newRow("class") << QString() << text("write") << QString() << qint64(1);
    QTest::newRow("application id") << QString() << text("odd") << text("write") << qint64(1);
    QTest::newRow("process") << QString() << text("odd") << QString() << qint64(700);
}

void OpenApplicationsTest::aWindowIsMatchedAgainWhenItSaysSomethingElse()
{
    QFETCH(const QString, instance);
    QFETCH(const QString, windowClass);
    QFETCH(const QString, applicationId);
    QFETCH(const qint64, process);
    m_process.executable = text("/usr/bin/write");
    m_process.command = {text("write")};
    QVERIFY(identify({window(1, "odd", 1)}).isEmpty());
    const WindowFacts now{.window = 1,
        .instanceName = instance,
        .className = windowClass,
        .applicationId = applicationId,
        .process = process};
    QCOMPARE(identify({now}).value(1), text("write"));
}

void OpenApplicationsTest::allAreMatchedAgainWhenEntriesChange()
{
    QVERIFY(identify({window(1, "draw")}).isEmpty());
    m_identities.setMatcher(std::make_shared<moorline::WindowMatcher>(
        QList<moorline::EntryRecord>{{.path = text("/draw.desktop"), .id = text("draw")}}));
    QCOMPARE(identify({window(1, "draw")}).value(1), text("draw"));
    m_identities.setMatcher(std::make_shared<moorline::WindowMatcher>());
    QVERIFY(identify({window(1, "draw")}).isEmpty());
}

void OpenApplicationsTest::aWindowThatCameBackIsMatchedAgain()
{
    QCOMPARE(identify({window(1, "odd", 700)}).value(1), text("paint"));
    QVERIFY(identify({}).isEmpty());
    m_process.executable = text("/usr/bin/write");
    m_process.command = {text("write")};
    QCOMPARE(identify({window(1, "odd", 700)}).value(1), text("write"));
}

void OpenApplicationsTest::whatIsLearntOfAProcessCountsWhenItIsTold()
{
    m_process.process = 0;
    QVERIFY(identify({window(1, "odd", 700), window(2, "odd", 800)}).isEmpty());
    m_process.process = 700;
    QVERIFY(identify({window(1, "odd", 700), window(2, "odd", 800)}).isEmpty());
    m_asked.clear();
    m_identities.forget(700);
    QCOMPARE(identify({window(1, "odd", 700), window(2, "odd", 800)}).value(1), text("paint"));
    QCOMPARE(m_asked, QList<qint64>{700});
}

void OpenApplicationsTest::aDialogBelongsToItsOwner()
{
    WindowFacts dialog = window(2, "odd");
    dialog.transientFor = 1;
    WindowFacts second = window(3, "odder");
    second.transientFor = 2;
    const QHash<XWindowId, QString> entries = identify({second, dialog, window(1, "paint")});
    QCOMPARE(entries.value(2), text("paint"));
    QCOMPARE(entries.value(3), text("paint"));
}

void OpenApplicationsTest::aDialogThatSaysSomethingIsItsOwn()
{
    WindowFacts dialog = window(2, "write");
    dialog.transientFor = 1;
    QCOMPARE(identify({window(1, "paint"), dialog}).value(2), text("write"));
}

void OpenApplicationsTest::aWindowOfAnotherMachineHasNoProcess()
{
    QVERIFY(identify({window(1, "odd")}).isEmpty());
    QVERIFY(m_asked.isEmpty());
}

void OpenApplicationsTest::aWindowIsUndecidedUntilItsProcessIsKnown()
{
    const QList<WindowFacts> windows{
        window(1, "odd", 700), window(2, "odd", 800), window(3, "paint", 800), window(4, "odd")};
    m_process.process = 0;
    identify(windows);
    QCOMPARE(m_identities.undecided(), (QSet<XWindowId>{1, 2}));
    m_process.process = 700;
    m_identities.forget(700);
    identify(windows);
    QCOMPARE(m_identities.undecided(), QSet<XWindowId>{2});
    identify({});
    QCOMPARE(m_identities.undecided(), QSet<XWindowId>());
}

MOORLINE_TEST(OpenApplicationsTest);

} // namespace

#include "OpenApplicationsTest.moc"
