#include "apps/ScriptedFileManager.h"

#include "fakes/FakeApplications.h"
#include "fakes/FakeClock.h"
#include "fakes/FakePreferences.h"
#include "harness/TestCase.h"
#include "system/AppleScriptRunner.h"
#include "system/Programs.h"

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

namespace {

const QString finderDomain = QStringLiteral("com.apple.finder");
const QString home = QStringLiteral("/Users/me");
const QString targetKey = QStringLiteral("NewWindowTarget");
const QString pathKey = QStringLiteral("NewWindowTargetPath");

/// Finder's script host is a program of the test's.
struct Finder {
    explicit Finder(const QByteArray &script)
        : scripts(clock, programs.addRecorder("osascript", script))
        , manager(std::make_unique<ScriptedFileManager>(ScriptedFileManager::Context{
              .scripts = scripts, .preferences = preferences, .workspace = workspace, .home = home}))
    {
        finder = workspace.launch(finderDomain, QStringLiteral("/System/Library/CoreServices/Finder.app"));
    }

    Programs programs;
    FakeClock clock;
    FakePreferences preferences;
    FakeWorkspace workspace;
    RunningApplication finder;
    AppleScriptRunner scripts;
    std::unique_ptr<ScriptedFileManager> manager;
};

} // namespace

class ScriptedFileManagerTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void theNewWindowShowsWhatFinderWouldShow_data()
    {
        using Path = std::optional<QString>;
        QTest::addColumn<QVariantHash>("values");
        QTest::addColumn<Path>("path");
        const auto target = [](const char *value) { return QVariantHash{{targetKey, QString::fromLatin1(value)}}; };
        const auto address = [](const char *value) { return QVariantHash{{pathKey, QString::fromUtf8(value)}}; };
        QTest::newRow("computer") << target("PfCm") << Path();
        QTest::newRow("home") << target("PfHm") << Path(QStringLiteral("/Users/me"));
        QTest::newRow("desktop") << target("PfDe") << Path(QStringLiteral("/Users/me/Desktop"));
        QTest::newRow("documents") << target("PfDo") << Path(QStringLiteral("/Users/me/Documents"));
        QTest::newRow("all files") << target("PfAF") << Path(QStringLiteral("/Users/me"));
        QTest::newRow("nothing set") << QVariantHash() << Path(home);
        QTest::newRow("unknown target") << target("PfXX") << Path(home);
        QTest::newRow("case counts") << target("pfcm") << Path(home);
        QTest::newRow("a folder") << address("file:///Volumes/My%20Disk/") << Path(QStringLiteral("/Volumes/My Disk"));
        QTest::newRow("this machine") << address("file://localhost/Work") << Path(QStringLiteral("/Work"));
        QTest::newRow("root") << address("file:///") << Path(QStringLiteral("/"));
        QTest::newRow("web") << address("https://example.org/Work") << Path(home);
        QTest::newRow("no scheme") << address("/Work") << Path(home);
        QTest::newRow("not an address") << address("file:// :x/%zz") << Path(home);
        QTest::newRow("empty") << address("") << Path(home);
        QTest::newRow("a target that says to look at the path") << QVariantHash{{targetKey, QStringLiteral("PfLo")},
            {pathKey, QStringLiteral("file:///Work/")}} << Path(QStringLiteral("/Work"));
        QTest::newRow("a target wins over the path")
            << QVariantHash{{targetKey, QStringLiteral("PfHm")}, {pathKey, QStringLiteral("file:///Work/")}}
            << Path(home);
        QTest::newRow("no texts") << QVariantHash{{targetKey, 1}, {pathKey, 2}} << Path(home);
    }

    void theNewWindowShowsWhatFinderWouldShow()
    {
        QFETCH(QVariantHash, values);
        FakePreferences preferences;
        preferences.domains[finderDomain] = values;
        QTEST(finderNewWindowTargetPath(preferences, home), "path");
    }

    void withoutPreferencesItShowsTheHome()
    {
        QCOMPARE(finderNewWindowTargetPath(FakePreferences(), home), std::optional(home));
    }

    void theScriptMakesAWindowOnlyWhereThereIsNone()
    {
        QCOMPARE(finderScript(std::nullopt),
            QStringLiteral("tell application \"Finder\"\n    activate\n    if (count of windows) is 0 then\n        "
                           "make new Finder window\n    end if\nend tell"));
        QCOMPARE(finderScript(QStringLiteral("/Users/me")),
            QStringLiteral("tell application \"Finder\"\n    activate\n    if (count of windows) is 0 then\n        "
                           "make new Finder window to (POSIX file \"/Users/me\")\n    end if\nend tell"));
    }

    void quotesAndBackslashesInAPathAreEscaped()
    {
        QVERIFY(finderScript(QStringLiteral("/a\\\"b")).contains(QStringLiteral("(POSIX file \"/a\\\\\\\"b\")\n")));
    }

    void itRunsTheScript()
    {
        Finder finder("true");
        finder.preferences.domains[finderDomain] = {{targetKey, QStringLiteral("PfDe")}};
        finder.manager->comeForward(nullptr);
        QTRY_VERIFY(!Programs::areRunning());
        QCOMPARE(finder.programs.recorded("osascript"),
            QStringLiteral("<-e>\n<%1>\n").arg(finderScript(QStringLiteral("/Users/me/Desktop"))));
        QVERIFY(finder.workspace.folders.isEmpty());
        QVERIFY(finder.workspace.activated.isEmpty());
    }

    void whereScriptsAreRefusedTheHomeIsShown()
    {
        Finder finder("exit 1");
        finder.preferences.domains[finderDomain] = {{targetKey, QStringLiteral("PfDe")}};
        finder.manager->comeForward(nullptr);
        QTRY_COMPARE(finder.workspace.folders, QStringList{home});
        QCOMPARE(finder.workspace.activated, QList<RunningApplication>{finder.finder});
    }

    void withoutFinderTheHomeIsShownAllTheSame()
    {
        Finder finder("exit 1");
        finder.workspace.running = std::nullopt;
        finder.manager->comeForward(nullptr);
        QTRY_COMPARE(finder.workspace.folders, QStringList{home});
        QVERIFY(finder.workspace.activated.isEmpty());
    }

    void whoAsksIsToldHowItEnded()
    {
        QList<std::optional<QString>> answers;
        const auto opened = [&answers](const std::optional<QString> &error) { answers.append(error); };
        Finder finder("true");
        finder.manager->comeForward(opened);
        QTRY_COMPARE(answers, QList<std::optional<QString>>{std::nullopt});
        Finder refused("exit 1");
        refused.manager->comeForward(opened);
        QTRY_VERIFY(refused.workspace.folderShown);
        QCOMPARE(answers.size(), 1);
        refused.workspace.folderShown(QStringLiteral("no"));
        QCOMPARE(answers.last(), QStringLiteral("no"));
    }

    void theScriptHasFiveSeconds()
    {
        Finder finder("exec >&- 2>&-; touch \"$home/there\"; exec sleep 60");
        finder.manager->comeForward(nullptr);
        QTRY_VERIFY(finder.programs.exists("there"));
        QTRY_COMPARE(finder.clock.runningTimers(), 1);
        finder.clock.advance(4999ms);
        QVERIFY(finder.workspace.folders.isEmpty());
        finder.clock.advance(1ms);
        QCOMPARE(finder.workspace.folders, QStringList{home});
        QTRY_VERIFY(!Programs::areRunning());
    }

    void aScriptMayOutliveTheFileManager()
    {
        Finder finder("exit 1");
        finder.manager->comeForward(nullptr);
        finder.manager.reset();
        QTRY_VERIFY(!Programs::areRunning());
        QCoreApplication::processEvents();
        QVERIFY(finder.workspace.folders.isEmpty());
    }
};

MOORLINE_TEST(ScriptedFileManagerTest);
#include "ScriptedFileManagerTest.moc"
