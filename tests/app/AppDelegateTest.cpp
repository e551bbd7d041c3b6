#include "app/AppDelegate.h"

#include "DockFixture.h"
#include "app/StatusItem.h"
#include "dock/DockPanel.h"
#include "platform/Platform.h"
#include "support/TestCase.h"

#include <QImage>
#include <QRegularExpression>

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

namespace {

/// A whole program on fakes.
struct Program {
    explicit Program(RunPlan plan)
    {
        platform.clock = std::make_unique<FakeClock>();
        platform.screens = std::make_unique<FakeScreens>();
        platform.pointer = std::make_unique<FakePointer>();
        platform.panelWindow = std::make_unique<FakePanelWindow>();
        platform.windowServer = std::make_unique<FakeWindowServer>();
        platform.workspace = std::make_unique<FakeWorkspace>();
        platform.statusBar = std::make_unique<FakeStatusBar>();
        platform.preferences = std::make_unique<FakePreferences>();
        platform.systemDockControl = std::make_unique<FakeSystemDockControl>();
        platform.systemSettings = std::make_unique<FakeSystemSettings>();
        platform.directories = std::make_unique<TemporaryDirectories>();
        platform.appBundles = std::make_unique<FakeAppBundles>();
        platform.systemImages = std::make_unique<FakeSystemImages>();
        delegate = std::make_unique<AppDelegate>(platform, std::move(plan),
            AppDelegate::Outlets{[this] {
                                     ++imports;
                                     return importResult;
                                 },
                [this](const QString &line) { printed.append(line); }, [this] { ++terminations; }});
    }

    void advance(std::chrono::milliseconds duration) { static_cast<FakeClock &>(*platform.clock).advance(duration); }
    [[nodiscard]] qsizetype timers() const { return static_cast<FakeClock &>(*platform.clock).runningTimers(); }

    Platform platform;
    ImportResult importResult;
    int imports = 0;
    QStringList printed;
    int terminations = 0;
    std::unique_ptr<AppDelegate> delegate;
};

/// The offscreen platform has no tray that could come later, and says so.
void expectTrayWarning()
{
    QTest::ignoreMessage(
        QtWarningMsg, "QObject::connect: No such signal QPlatformNativeInterface::systemTrayWindowChanged(QScreen*)");
}

RunPlan plan(RunMode mode)
{
    RunPlan result;
    result.mode = mode;
    return result;
}

} // namespace

class AppDelegateTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void aNormalRunShowsThePanelAndTheStatusItem()
    {
        Program program(plan(RunMode::normal));
        expectTrayWarning();
        program.delegate->applicationDidFinishLaunching();
        QVERIFY(program.delegate->windowController().panel());
        QVERIFY(program.delegate->statusItem());
        program.advance(60s);
        QCOMPARE(program.terminations, 0);
        QCOMPARE(program.imports, 0);
        QVERIFY(program.printed.isEmpty());
    }

    void theImportPrintsItsReportAndEnds()
    {
        Program program(plan(RunMode::importDock));
        program.importResult.unresolved = {QStringLiteral("Gone")};
        program.delegate->applicationDidFinishLaunching();
        QCOMPARE(program.printed,
            (QStringList{QStringLiteral("skipped (not found): Gone"), QStringLiteral("total pinned apps now: 1")}));
        QCOMPARE(program.terminations, 1);
        QVERIFY(!program.delegate->windowController().panel());
        QVERIFY(!program.delegate->statusItem());
        QCOMPARE(program.timers(), 0);
    }

    void thePreviewIsDrawnAfterSixSecondsAndEnds()
    {
        QTemporaryDir folder;
        RunPlan preview = plan(RunMode::render);
        preview.previewPath = folder.filePath(QStringLiteral("preview.png"));
        Program program(preview);
        program.delegate->applicationDidFinishLaunching();
        program.advance(5900ms);
        QCOMPARE(program.terminations, 0);
        QTest::ignoreMessage(
            QtInfoMsg, qPrintable(QStringLiteral("Moorline: wrote preview to ") + *preview.previewPath));
        program.advance(100ms);
        QCOMPARE(program.terminations, 1);
        QCOMPARE(QImage(*preview.previewPath).size(), QSize(3200, 276));
        QVERIFY(!program.delegate->windowController().panel());
        QVERIFY(!program.delegate->statusItem());
        QCOMPARE(program.imports, 0);
    }

    void aPreviewThatFailsEndsToo()
    {
        RunPlan preview = plan(RunMode::render);
        preview.previewPath = QStringLiteral("/nowhere/at/all.png");
        Program program(preview);
        program.delegate->applicationDidFinishLaunching();
        QTest::ignoreMessage(QtInfoMsg, QRegularExpression(QStringLiteral("^Moorline: could not write preview: .+")));
        program.advance(6s);
        QCOMPARE(program.terminations, 1);
    }

    void theSnapshotIsTakenAfterEightSecondsAndEnds()
    {
        QTemporaryDir folder;
        RunPlan snapshot = plan(RunMode::normal);
        snapshot.snapshotPath = folder.filePath(QStringLiteral("bar.png"));
        Program program(snapshot);
        expectTrayWarning();
        program.delegate->applicationDidFinishLaunching();
        program.delegate->windowController().panel()->show();
        program.advance(7900ms);
        QCOMPARE(program.terminations, 0);
        QTest::ignoreMessage(
            QtInfoMsg, qPrintable(QStringLiteral("Moorline: wrote live snapshot to ") + *snapshot.snapshotPath));
        program.advance(100ms);
        QCOMPARE(program.terminations, 1);
        QVERIFY(!QImage(*snapshot.snapshotPath).isNull());
    }

    void aSnapshotThatFailsEndsToo()
    {
        RunPlan snapshot = plan(RunMode::normal);
        snapshot.snapshotPath = QStringLiteral("/nowhere/at/all.png");
        Program program(snapshot);
        expectTrayWarning();
        program.delegate->applicationDidFinishLaunching();
        program.delegate->windowController().panel()->show();
        QTest::ignoreMessage(QtInfoMsg, QRegularExpression(QStringLiteral("^Moorline: could not write snapshot: .+")));
        program.advance(8s);
        QCOMPARE(program.terminations, 1);
    }

    void aDroppedApplicationBecomesAShortcut()
    {
        Program program(plan(RunMode::normal));
        auto &bundles = static_cast<FakeAppBundles &>(*program.platform.appBundles);
        bundles.bundles[QStringLiteral("/Applications/Notes.app")] = {
            QStringLiteral("org.example.notes"), QStringLiteral("Notes"), std::nullopt};
        program.delegate->store().pin({QUrl::fromLocalFile(QStringLiteral("/Applications/Notes.app"))});
        QCOMPARE(program.delegate->store().settings().appShortcuts.last().name, QStringLiteral("Notes"));
    }
};

MOORLINE_TEST(AppDelegateTest);

#include "AppDelegateTest.moc"
