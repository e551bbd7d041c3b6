#include "freedesktop/WindowMatcher.h"
#include "harness/TestCase.h"

namespace {

using moorline::EntryRecord;
using moorline::ProcessFacts;
using moorline::WindowFacts;
using moorline::WindowMatcher;

QString text(const char *latin)
{
    return QString::fromLatin1(latin);
}

EntryRecord entry(const char *id, const char *exec = "", const char *startupClass = "")
{
    return {.path = QStringLiteral("/usr/share/applications/%1.desktop").arg(text(id)),
        .id = text(id),
        .exec = text(exec),
        .startupWmClass = text(startupClass)};
}

WindowFacts window(const char *instance, const char *windowClass)
{
    return {.window = 1, .instanceName = text(instance), .className = text(windowClass)};
}

WindowFacts anonymous()
{
    return window("", "");
}

ProcessFacts process(const char *executable, const char *command)
{
    return {.process = 700, .executable = text(executable), .command = text(command).split(u' ')};
}

/// The id, or nothing.
QString found(const QList<EntryRecord> &records, const WindowFacts &facts)
{
    return WindowMatcher(records).match(facts, nullptr).value_or(QString());
}

QString found(const QList<EntryRecord> &records, const WindowFacts &facts, const ProcessFacts &processFacts)
{
    return WindowMatcher(records).match(facts, &processFacts).value_or(QString());
}

class WindowMatcherTest : public moorline::test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void nobodyOwnsAWindowThatSaysNothing();
    void theApplicationIdStandsAboveTheClass();
    void theApplicationIdIsComparedIgnoringCaseAtLast();
    void theApplicationIdMayBeWhatAnEntryStartsOverTheBus();
    void theStartupClassIsTheInstanceThenTheClass();
    void theStartupClassIsComparedIgnoringCase();
    void theStartupClassInTheSameCaseStandsAboveAnyOther();
    void theStartupClassStandsAboveTheNameOfAnEntry();
    void ofTheSameStartupClassTheEntryOfThatNameCounts();
    void ofTheSameStartupClassTheOneThatIsShownCounts();
    void ofTheSameStartupClassTheFirstCounts();
    void aNameIsWrittenInManyWays_data();
    void aNameIsWrittenInManyWays();
    void theInstanceAsANameStandsAboveTheClass();
    void namesOfInterpretersSayNothing();
    void twoProgramsOfOneSuiteAreTold();

    void theHintOfTheEnvironmentIsAPath();
    void theHintOfTheEnvironmentIsANameWhereThePathIsAnothers();
    void theHintStandsAboveTheProgram();
    void theClassStandsAboveTheHint();
    void theProgramIsTheFirstWordOfExec_data();
    void theProgramIsTheFirstWordOfExec();
    void aScriptIsKnownByItsNameAndNotItsInterpreters_data();
    void aScriptIsKnownByItsNameAndNotItsInterpreters();
    void ofTheSameProgramTheOneWithTheSameArgumentsCounts();
    void ofTheSameProgramTheOneThatIsShownCounts();
    void ofTheSameProgramNoneCountsWhoseArgumentsAreMissing();
    void anOnlyEntryNeedsNoArguments();
    void whatRunsInATerminalHasNoWindow();

    void aLaunchIsRememberedByTheProcessItself();
    void aLaunchIsRememberedByTheShellThatIsTheParent();
    void aLaunchIsNotInheritedFromAnybodyElse();
    void theProgramStandsAboveTheLaunch();
    void aLaunchInATerminalIsTheTerminals();

    void aSandboxStandsAboveAll();
    void aSandboxWithSeveralEntriesIsToldByTheClass();
    void aSandboxWithoutAKnownClassIsItsOwnEntry();
    void aSandboxIsKnownByWhatAnEntryRuns();
    void aSandboxWithoutAnEntryIsLikeAnyOther();

    void whatTheWindowSaysDecidesWhereNoSandboxCouldSayElse();
    void whereThereAreSandboxesTheProcessDecides_data();
    void whereThereAreSandboxesTheProcessDecides();
};

void WindowMatcherTest::nobodyOwnsAWindowThatSaysNothing()
{
    QCOMPARE(found({entry("paint", "paint")}, anonymous()), QString());
    QCOMPARE(found({entry("paint", "paint")}, anonymous(), {.process = 700}), QString());
    QCOMPARE(found({}, window("paint", "Paint")), QString());
    QCOMPARE(found({entry("paint", "paint")}, window("write", "Write")), QString());
}

void WindowMatcherTest::theApplicationIdStandsAboveTheClass()
{
    WindowFacts facts = window("paint", "Paint");
    facts.applicationId = text("org.example.Notes");
    QCOMPARE(found({entry("paint", "", "paint"), entry("org.example.Notes")}, facts), text("org.example.Notes"));
}

void WindowMatcherTest::theApplicationIdIsComparedIgnoringCaseAtLast()
{
    WindowFacts facts = anonymous();
    facts.applicationId = text("org.example.notes");
    QCOMPARE(found({entry("org.example.Notes")}, facts), text("org.example.Notes"));
    QCOMPARE(found({entry("org.example.Notes"), entry("org.example.notes")}, facts), text("org.example.notes"));
}

void WindowMatcherTest::theApplicationIdMayBeWhatAnEntryStartsOverTheBus()
{
    WindowFacts facts = anonymous();
    facts.applicationId = text("org.example.Notes");
    QCOMPARE(found({entry("notes", "gapplication launch org.example.Notes")}, facts), text("notes"));
}

void WindowMatcherTest::theStartupClassIsTheInstanceThenTheClass()
{
    const QList<EntryRecord> records{entry("one", "", "Office"), entry("two", "", "office-writer")};
    QCOMPARE(found(records, window("office-writer", "Office")), text("two"));
    QCOMPARE(found(records, window("something", "Office")), text("one"));
}

void WindowMatcherTest::theStartupClassIsComparedIgnoringCase()
{
    QCOMPARE(found({entry("one", "", "OFFICE")}, window("office", "")), text("one"));
}

void WindowMatcherTest::theStartupClassInTheSameCaseStandsAboveAnyOther()
{
    const QList<EntryRecord> twoCases{entry("upper", "", "OFFICE"), entry("lower", "", "office")};
    QCOMPARE(found(twoCases, window("office", "")), text("lower"));
    QCOMPARE(found(twoCases, window("OFFICE", "")), text("upper"));
    QCOMPARE(found(twoCases, window("Office", "")), text("upper"));
    // The class as it is written, too, before the instance in another case.
    QCOMPARE(found({entry("one", "", "SUITE"), entry("two", "", "Writer")}, window("suite", "Writer")), text("two"));
}

void WindowMatcherTest::theStartupClassStandsAboveTheNameOfAnEntry()
{
    QCOMPARE(found({entry("paint"), entry("draw", "", "Paint")}, window("paint", "Paint")), text("draw"));
}

void WindowMatcherTest::ofTheSameStartupClassTheEntryOfThatNameCounts()
{
    EntryRecord hidden = entry("Paint", "", "paint");
    hidden.noDisplay = true;
    QCOMPARE(found({entry("a-paint", "", "paint"), hidden}, window("paint", "Paint")), text("Paint"));
}

void WindowMatcherTest::ofTheSameStartupClassTheOneThatIsShownCounts()
{
    EntryRecord hidden = entry("b-paint", "", "paint");
    hidden.noDisplay = true;
    QCOMPARE(found({hidden, entry("a-paint", "", "paint")}, window("paint", "Paint")), text("a-paint"));
}

void WindowMatcherTest::ofTheSameStartupClassTheFirstCounts()
{
    QCOMPARE(
        found({entry("b-paint", "", "paint"), entry("a-paint", "", "paint")}, window("paint", "")), text("b-paint"));
}

void WindowMatcherTest::aNameIsWrittenInManyWays_data()
{
    QTest::addColumn<QString>("id");
    QTest::addColumn<QString>("name");
    const auto row = [](const char *id, const char *name) {
        QTest::newRow(id) << QString::fromLatin1(id) << QString::fromLatin1(name);
    };
    row("Paint", "Paint");
    row("paint", "Paint");
    row("Paint-Shop", "Paint Shop");
    row("paint-shop", "Paint Shop");
    row("org.gnome.Paint", "Paint");
    row("org.kde.paint", "Paint");
    row("org.freedesktop.paint-shop", "Paint Shop");
}

void WindowMatcherTest::aNameIsWrittenInManyWays()
{
    QFETCH(const QString, id);
    QFETCH(const QString, name);
    const QList<EntryRecord> records{{.path = QStringLiteral("/x.desktop"), .id = id}};
    QCOMPARE(found(records, {.window = 1, .instanceName = name}), id);
    QCOMPARE(found(records, {.window = 1, .className = name}), id);
}

void WindowMatcherTest::theInstanceAsANameStandsAboveTheClass()
{
    QCOMPARE(found({entry("suite"), entry("writer")}, window("writer", "suite")), text("writer"));
}

void WindowMatcherTest::namesOfInterpretersSayNothing()
{
    const QList<EntryRecord> records{entry("python3", "python3", "python3"), entry("java", "java", "java")};
    QCOMPARE(found(records, window("python3", "Python3")), QString());
    QCOMPARE(found(records, window("java", "java"), process("/usr/bin/java", "java -jar /opt/a.jar")), QString());
}

void WindowMatcherTest::twoProgramsOfOneSuiteAreTold()
{
    const QList<EntryRecord> records{entry("office-startcenter", "office", "office-startcenter"),
        entry("office-writer", "office --writer", "office-writer"),
        entry("office-calc", "office --calc", "office-calc")};
    const ProcessFacts both = process("/usr/lib/office/soffice.bin", "/usr/lib/office/soffice.bin --writer");
    QCOMPARE(found(records, window("office", "office-writer"), both), text("office-writer"));
    QCOMPARE(found(records, window("office", "office-calc"), both), text("office-calc"));
}

void WindowMatcherTest::theHintOfTheEnvironmentIsAPath()
{
    ProcessFacts facts = process("/usr/bin/odd", "odd");
    facts.hintedEntry = text("/usr/share/applications/paint.desktop");
    QCOMPARE(found({entry("write"), entry("paint")}, anonymous(), facts), text("paint"));
}

void WindowMatcherTest::theHintOfTheEnvironmentIsANameWhereThePathIsAnothers()
{
    ProcessFacts facts = process("/usr/bin/odd", "odd");
    facts.hintedEntry = text("/var/lib/snapd/desktop/applications/paint.desktop");
    QCOMPARE(found({entry("write"), entry("paint")}, anonymous(), facts), text("paint"));
}

void WindowMatcherTest::theHintStandsAboveTheProgram()
{
    ProcessFacts facts = process("/usr/bin/write", "write");
    facts.hintedEntry = text("/usr/share/applications/paint.desktop");
    QCOMPARE(found({entry("write", "write"), entry("paint", "paint")}, anonymous(), facts), text("paint"));
}

void WindowMatcherTest::theClassStandsAboveTheHint()
{
    ProcessFacts facts = process("/usr/bin/write", "write");
    facts.hintedEntry = text("/usr/share/applications/paint.desktop");
    QCOMPARE(found({entry("write"), entry("paint")}, window("write", ""), facts), text("write"));
}

void WindowMatcherTest::theProgramIsTheFirstWordOfExec_data()
{
    QTest::addColumn<QString>("exec");
    QTest::addColumn<bool>("isFound");
    QTest::newRow("by name") << QStringLiteral("paint %F") << true;
    QTest::newRow("by path") << QStringLiteral("/opt/paint/bin/paint %F") << true;
    QTest::newRow("by the name it was called") << QStringLiteral("artist %F") << true;
    QTest::newRow("by the path it was called") << QStringLiteral("/usr/bin/artist") << true;
    QTest::newRow("behind a wrapper") << QStringLiteral("env LANG=C paint") << true;
    QTest::newRow("another of that name") << QStringLiteral("/usr/bin/paint") << false;
    QTest::newRow("another") << QStringLiteral("painter") << false;
    QTest::newRow("part of the path") << QStringLiteral("bin") << false;
    QTest::newRow("none") << QString() << false;
}

void WindowMatcherTest::theProgramIsTheFirstWordOfExec()
{
    QFETCH(const QString, exec);
    QFETCH(const bool, isFound);
    EntryRecord record = entry("drawing");
    record.exec = exec;
    const ProcessFacts facts = process("/opt/paint/bin/paint", "/usr/bin/artist file.png");
    QCOMPARE(found({record}, anonymous(), facts), isFound ? text("drawing") : QString());
}

void WindowMatcherTest::aScriptIsKnownByItsNameAndNotItsInterpreters_data()
{
    QTest::addColumn<QString>("exec");
    QTest::addColumn<QString>("executable");
    QTest::addColumn<QString>("command");
    QTest::addColumn<bool>("isFound");
    const auto row = [](const char *exec, const char *executable, const char *command, bool isFound) {
        QTest::addRow("%s by %s", exec, command) << text(exec) << text(executable) << text(command) << isFound;
    };
    row("paint", "/usr/bin/python3.11", "/usr/bin/python3 /usr/bin/paint", true);
    row("python3 /usr/share/paint/paint.py", "/usr/bin/python3.11", "python3 /usr/share/paint/paint.py a.png", true);
    row("java -jar /opt/paint.jar", "/usr/lib/jvm/bin/java", "java -Xmx1g -jar /opt/paint.jar", true);
    row("gjs /usr/share/paint.js", "/usr/bin/gjs-console", "/usr/bin/gjs /usr/share/paint.js", true);
    row("sh -c 'exec paint'", "/usr/bin/paint", "paint", true);
    row("python3", "/usr/bin/python3.11", "python3 /usr/bin/other", false);
    row("python3 other.py", "/usr/bin/python3.11", "python3 /usr/bin/paint", false);
    row("java", "/usr/lib/jvm/bin/java", "java -jar /opt/other.jar", false);
    row("env A=b", "/usr/bin/env", "env", false);
    row("flatpak run org.example.Paint", "/usr/bin/flatpak", "flatpak run org.example.Paint", false);
}

void WindowMatcherTest::aScriptIsKnownByItsNameAndNotItsInterpreters()
{
    QFETCH(const QString, exec);
    QFETCH(const QString, executable);
    QFETCH(const QString, command);
    QFETCH(const bool, isFound);
    EntryRecord record = entry("drawing");
    record.exec = exec;
    const ProcessFacts facts{.process = 700, .executable = executable, .command = command.split(u' ')};
    QCOMPARE(found({record}, anonymous(), facts), isFound ? text("drawing") : QString());
}

void WindowMatcherTest::ofTheSameProgramTheOneWithTheSameArgumentsCounts()
{
    const QList<EntryRecord> records{
        entry("files", "files %U"), entry("desktop", "files --desktop --quiet"), entry("settings", "files --settings")};
    QCOMPARE(found(records, anonymous(), process("/usr/bin/files", "files")), text("files"));
    QCOMPARE(found(records, anonymous(), process("/usr/bin/files", "files --settings x")), text("settings"));
    QCOMPARE(found(records, anonymous(), process("/usr/bin/files", "files --desktop -v --quiet")), text("desktop"));
    QCOMPARE(found(records, anonymous(), process("/usr/bin/files", "files --desktop")), text("files"));
}

void WindowMatcherTest::ofTheSameProgramTheOneThatIsShownCounts()
{
    EntryRecord hidden = entry("a", "files");
    hidden.noDisplay = true;
    QCOMPARE(found({hidden, entry("b", "files")}, anonymous(), process("/usr/bin/files", "files")), text("b"));
}

void WindowMatcherTest::ofTheSameProgramNoneCountsWhoseArgumentsAreMissing()
{
    const QList<EntryRecord> records{entry("desktop", "files --desktop"), entry("settings", "files --settings")};
    QCOMPARE(found(records, anonymous(), process("/usr/bin/files", "files")), QString());
}

void WindowMatcherTest::anOnlyEntryNeedsNoArguments()
{
    QCOMPARE(found({entry("files", "files --new")}, anonymous(), process("/usr/bin/files", "files")), text("files"));
}

void WindowMatcherTest::whatRunsInATerminalHasNoWindow()
{
    EntryRecord monitor = entry("monitor", "monitor");
    monitor.terminal = true;
    QCOMPARE(found({monitor}, anonymous(), process("/usr/bin/monitor", "monitor")), QString());
}

void WindowMatcherTest::aLaunchIsRememberedByTheProcessItself()
{
    ProcessFacts facts = process("/usr/bin/odd", "odd");
    facts.launchedEntry = text("/usr/share/applications/paint.desktop");
    facts.launchedProcess = 700;
    QCOMPARE(found({entry("paint", "paint")}, anonymous(), facts), text("paint"));
}

void WindowMatcherTest::aLaunchIsRememberedByTheShellThatIsTheParent()
{
    ProcessFacts facts = process("/usr/bin/odd", "odd");
    facts.launchedEntry = text("/usr/share/applications/paint.desktop");
    facts.launchedProcess = 600;
    facts.parent = 600;
    facts.parentCommand = {text("/bin/sh"), text("/usr/bin/paint")};
    QCOMPARE(found({entry("paint", "paint")}, anonymous(), facts), text("paint"));
    facts.parentCommand = {text("/usr/bin/editor")};
    QCOMPARE(found({entry("paint", "paint")}, anonymous(), facts), QString());
}

void WindowMatcherTest::aLaunchIsNotInheritedFromAnybodyElse()
{
    ProcessFacts facts = process("/usr/bin/odd", "odd");
    facts.launchedEntry = text("/usr/share/applications/terminal.desktop");
    facts.parentCommand = {text("/bin/sh")};
    QCOMPARE(found({entry("terminal", "terminal")}, anonymous(), facts), QString());
    facts.launchedProcess = 500;
    facts.parent = 600;
    QCOMPARE(found({entry("terminal", "terminal")}, anonymous(), facts), QString());
}

void WindowMatcherTest::theProgramStandsAboveTheLaunch()
{
    ProcessFacts facts = process("/usr/bin/write", "write");
    facts.launchedEntry = text("/usr/share/applications/paint.desktop");
    facts.launchedProcess = 700;
    QCOMPARE(found({entry("write", "write"), entry("paint", "paint")}, anonymous(), facts), text("write"));
}

void WindowMatcherTest::aLaunchInATerminalIsTheTerminals()
{
    EntryRecord monitor = entry("monitor", "monitor");
    monitor.terminal = true;
    ProcessFacts facts = process("/usr/bin/odd", "odd -e monitor");
    facts.launchedEntry = monitor.path;
    facts.launchedProcess = 700;
    QCOMPARE(found({monitor, entry("terminal", "terminal")}, anonymous(), facts), QString());
    facts = process("/usr/bin/terminal", "terminal -e monitor");
    facts.launchedEntry = monitor.path;
    facts.launchedProcess = 700;
    facts.hintedEntry = monitor.path;
    QCOMPARE(found({monitor, entry("terminal", "terminal")}, anonymous(), facts), text("terminal"));
}

void WindowMatcherTest::aSandboxStandsAboveAll()
{
    EntryRecord boxed = entry("org.example.Paint", "flatpak run org.example.Paint");
    boxed.flatpakId = text("org.example.Paint");
    WindowFacts facts = window("paint", "Paint");
    facts.applicationId = text("paint");
    ProcessFacts inside = process("/app/bin/paint", "paint");
    QCOMPARE(found({entry("paint", "paint", "paint"), boxed}, facts, inside), text("paint"));
    inside.flatpakId = text("org.example.Paint");
    QCOMPARE(found({entry("paint", "paint", "paint"), boxed}, facts, inside), text("org.example.Paint"));
    inside.flatpakId.clear();
    inside.snapName = text("paint-snap");
    EntryRecord snapped = entry("paint-snap_paint", "/snap/bin/paint-snap");
    snapped.snapName = text("paint-snap");
    QCOMPARE(found({entry("paint", "paint", "paint"), snapped}, facts, inside), text("paint-snap_paint"));
}

void WindowMatcherTest::aSandboxWithSeveralEntriesIsToldByTheClass()
{
    EntryRecord writer = entry("org.office.Office.writer", "", "office-writer");
    EntryRecord calc = entry("org.office.Office.calc", "", "office-calc");
    writer.flatpakId = calc.flatpakId = text("org.office.Office");
    ProcessFacts inside = process("/app/office", "office");
    inside.flatpakId = text("org.office.Office");
    QCOMPARE(found({writer, calc}, window("office", "office-calc"), inside), text("org.office.Office.calc"));
    QCOMPARE(found({writer, calc}, window("office", "office-writer"), inside), text("org.office.Office.writer"));
}

void WindowMatcherTest::aSandboxWithoutAKnownClassIsItsOwnEntry()
{
    EntryRecord part = entry("org.office.Office.writer");
    EntryRecord whole = entry("org.office.Office");
    part.flatpakId = whole.flatpakId = text("org.office.Office");
    ProcessFacts inside = process("/app/office", "office");
    inside.flatpakId = text("org.office.Office");
    QCOMPARE(found({part, whole}, window("soffice", "Soffice"), inside), text("org.office.Office"));
}

void WindowMatcherTest::aSandboxIsKnownByWhatAnEntryRuns()
{
    ProcessFacts inside = process("/app/bin/paint", "paint");
    inside.flatpakId = text("org.example.Paint");
    QCOMPARE(
        found({entry("mine", "flatpak run --branch=stable org.example.Paint")}, anonymous(), inside), text("mine"));
}

void WindowMatcherTest::aSandboxWithoutAnEntryIsLikeAnyOther()
{
    ProcessFacts inside = process("/app/bin/paint", "paint");
    inside.flatpakId = text("org.example.Paint");
    QCOMPARE(found({entry("paint", "", "Paint")}, window("paint", "Paint"), inside), text("paint"));
}

void WindowMatcherTest::whatTheWindowSaysDecidesWhereNoSandboxCouldSayElse()
{
    const WindowMatcher matcher({entry("paint", "paint")});
    WindowFacts facts = window("paint", "Paint");
    facts.process = 700;
    QVERIFY(matcher.isDecidedWithoutProcess(facts));
    facts.instanceName = facts.className = text("odd");
    QVERIFY(!matcher.isDecidedWithoutProcess(facts));
    // On another machine.
    facts.process.reset();
    QVERIFY(matcher.isDecidedWithoutProcess(facts));
}

void WindowMatcherTest::whereThereAreSandboxesTheProcessDecides_data()
{
    QTest::addColumn<EntryRecord>("sandboxed");
    EntryRecord boxed = entry("org.example.Paint");
    boxed.flatpakId = text("org.example.Paint");
    QTest::newRow("flatpak") << boxed;
    boxed = entry("paint_paint");
    boxed.snapName = text("paint");
    QTest::newRow("snap") << boxed;
    QTest::newRow("by what it runs") << entry("mine", "flatpak run org.example.Paint");
}

void WindowMatcherTest::whereThereAreSandboxesTheProcessDecides()
{
    QFETCH(EntryRecord, sandboxed);
    const WindowMatcher matcher({entry("paint", "paint"), sandboxed});
    WindowFacts facts = window("paint", "Paint");
    QVERIFY(matcher.isDecidedWithoutProcess(facts));
    facts.process = 700;
    QVERIFY(!matcher.isDecidedWithoutProcess(facts));
}

MOORLINE_TEST(WindowMatcherTest);

} // namespace

#include "WindowMatcherTest.moc"
