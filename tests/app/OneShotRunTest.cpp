#include "app/Program.h"

#include "dock/DockPanel.h"
#include "harness/TestCase.h"

#include <QImage>
#include <QRegularExpression>
#include <QTemporaryDir>

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

namespace {

const AppShortcut notes{
    QStringLiteral("/Applications/Notes.app"), QStringLiteral("org.example.notes"), QStringLiteral("Notes")};

} // namespace

/// Runs that draw a picture or print a report, and end.
class OneShotRunTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void aPreviewWaitsForTheWeatherToo()
    {
        RunPlan preview = plan(RunMode::render);
        preview.previewPath = QStringLiteral("/nowhere/at/all.png");
        preview.weatherOrigin = QUrl(QStringLiteral("http://localhost:8080"));
        Program program(preview);
        program.delegate.applicationDidFinishLaunching();
        QCOMPARE(program.platform.httpClient.requested, QList<QUrl>{QUrl(QStringLiteral("http://localhost:8080/"))});
    }

    void anImportAsksForNoWeather()
    {
        Program program(plan(RunMode::importDock));
        program.delegate.applicationDidFinishLaunching();
        QVERIFY(program.platform.httpClient.requested.isEmpty());
    }

    void theImportPrintsItsReportAndEnds()
    {
        Program program(plan(RunMode::importDock));
        program.platform.preferences.domains[QStringLiteral("com.apple.dock")] = {{QStringLiteral("persistent-apps"),
            QVariantList{QVariantMap{
                {QStringLiteral("tile-data"), QVariantMap{{QStringLiteral("file-label"), QStringLiteral("Gone")}}}}}}};
        program.delegate.applicationDidFinishLaunching();
        QCOMPARE(program.printed,
            (QStringList{QStringLiteral("skipped (not found): Gone"), QStringLiteral("total pinned apps now: 1")}));
        QCOMPARE(program.terminations, 1);
        QVERIFY(!program.delegate.windowController().panel());
        QVERIFY(!program.platform.statusBar.item);
        QCOMPARE(program.platform.clock.runningTimers(), 0);
    }

    void thePreviewIsDrawnAfterSixSecondsAndEnds()
    {
        QTemporaryDir folder;
        RunPlan preview = plan(RunMode::render);
        preview.previewPath = folder.filePath(QStringLiteral("preview.png"));
        Program program(preview);
        program.delegate.applicationDidFinishLaunching();
        program.platform.clock.advance(5900ms);
        QCOMPARE(program.terminations, 0);
        QTest::ignoreMessage(
            QtInfoMsg, qPrintable(QStringLiteral("Moorline: wrote preview to ") + *preview.previewPath));
        program.platform.clock.advance(100ms);
        QCOMPARE(program.terminations, 1);
        QCOMPARE(QImage(*preview.previewPath).size(), QSize(3200, 276));
        QVERIFY(!program.delegate.windowController().panel());
        QVERIFY(!program.platform.statusBar.item);
    }

    void aPreviewThatFailsEndsToo()
    {
        RunPlan preview = plan(RunMode::render);
        preview.previewPath = QStringLiteral("/nowhere/at/all.png");
        Program program(preview);
        program.delegate.applicationDidFinishLaunching();
        QTest::ignoreMessage(QtInfoMsg, QRegularExpression(QStringLiteral("^Moorline: could not write preview: .+")));
        program.platform.clock.advance(6s);
        QCOMPARE(program.terminations, 1);
    }

    void theSnapshotIsTakenAfterEightSecondsAndEnds()
    {
        QTemporaryDir folder;
        RunPlan snapshot = plan(RunMode::normal);
        snapshot.snapshotPath = folder.filePath(QStringLiteral("bar.png"));
        Program program(snapshot);
        program.delegate.applicationDidFinishLaunching();
        program.delegate.windowController().panel()->show();
        program.platform.clock.advance(7900ms);
        QCOMPARE(program.terminations, 0);
        QTest::ignoreMessage(
            QtInfoMsg, qPrintable(QStringLiteral("Moorline: wrote live snapshot to ") + *snapshot.snapshotPath));
        program.platform.clock.advance(100ms);
        QCOMPARE(program.terminations, 1);
        QVERIFY(!QImage(*snapshot.snapshotPath).isNull());
    }

    void aSnapshotThatFailsEndsToo()
    {
        RunPlan snapshot = plan(RunMode::normal);
        snapshot.snapshotPath = QStringLiteral("/nowhere/at/all.png");
        Program program(snapshot);
        program.delegate.applicationDidFinishLaunching();
        program.delegate.windowController().panel()->show();
        QTest::ignoreMessage(QtInfoMsg, QRegularExpression(QStringLiteral("^Moorline: could not write snapshot: .+")));
        program.platform.clock.advance(8s);
        QCOMPARE(program.terminations, 1);
    }

    void aPreviewShowsIcons()
    {
        QTemporaryDir folder;
        RunPlan preview = plan(RunMode::render);
        preview.previewPath = folder.filePath(QStringLiteral("preview.png"));
        Program program(preview);
        program.delegate.store().change([](Settings &settings) {
            settings.enabledWidgets = {WidgetKind::appShortcut};
            settings.appShortcuts = {notes};
        });
        program.delegate.applicationDidFinishLaunching();
        QCOMPARE(program.platform.icons.requested, (QList{IconRequest{IconKind::application, notes.path, 46, 2}}));
        QVERIFY(program.platform.icons.answer(Qt::red));
        QTest::ignoreMessage(
            QtInfoMsg, qPrintable(QStringLiteral("Moorline: wrote preview to ") + *preview.previewPath));
        program.platform.clock.advance(6s);
        const QImage image(*preview.previewPath);
        // The row's middle; the icon stands a little above it.
        QCOMPARE(image.pixelColor(image.width() / 2 - 4, image.height() / 2 - 6), QColor(Qt::red));
    }
};

MOORLINE_TEST(OneShotRunTest);

#include "OneShotRunTest.moc"
