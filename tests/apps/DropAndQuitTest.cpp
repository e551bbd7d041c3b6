#include "apps/NotesDesk.h"
#include "harness/TestCase.h"

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

class DropAndQuitTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void filesAreOpenedInOneRequest()
    {
        NotesDesk desk;
        const auto urls = files({QStringLiteral("/tmp/a b.txt"), QStringLiteral("/tmp/50%.txt")});
        desk.launcher.open(urls, notes);
        QCOMPARE(desk.workspace.openings.size(), 1);
        QCOMPARE(desk.workspace.openings.first().path, notesPath);
        QCOMPARE(desk.workspace.openings.first().files, urls);
    }

    void filesAreOpenedAlsoWhereTheApplicationRuns()
    {
        NotesDesk desk;
        desk.workspace.launch(notesIdentifier, notesPath);
        desk.launcher.open(files({QStringLiteral("/a")}), notes);
        QCOMPARE(desk.workspace.openings.size(), 1);
        QVERIFY(desk.workspace.activated.isEmpty());
    }

    void noFilesOpenNothing()
    {
        NotesDesk desk;
        desk.launcher.open({}, notes);
        desk.launcher.open({}, finder);
        QVERIFY(desk.workspace.openings.isEmpty());
        QVERIFY(desk.workspace.revealed.isEmpty());
    }

    void aRefusedDropIsLogged()
    {
        NotesDesk desk;
        desk.launcher.open(files({QStringLiteral("/a")}), notes);
        announce("Moorline: Notes refused the drop: no such file");
        desk.failLast(QStringLiteral("no such file"));
    }

    void filesOnFinderAreShownInIt()
    {
        NotesDesk desk;
        const auto urls = files({QStringLiteral("/a"), QStringLiteral("/b")});
        desk.launcher.open(urls, finder);
        QCOMPARE(desk.workspace.revealed, QList<QList<QUrl>>{urls});
        QVERIFY(desk.workspace.openings.isEmpty());
        QVERIFY(desk.launcher.takesFiles(finder));
    }

    void whoTakesNoFilesGetsNone()
    {
        NotesDesk desk;
        QVERIFY(desk.launcher.takesFiles(notes));
        desk.bundles.bundles[notesPath].takesFiles = false;
        QVERIFY(!desk.launcher.takesFiles(notes));
        announce("Moorline: Notes refused the drop: it takes no files");
        desk.launcher.open(files({QStringLiteral("/a")}), notes);
        QVERIFY(desk.workspace.openings.isEmpty());
    }

    void whoMovedTakesFilesAsItIsWhereItIsNow()
    {
        NotesDesk desk;
        const QString now = QStringLiteral("/Applications/Notes 2.app");
        desk.bundles.bundles[now] = desk.bundles.bundles.value(notesPath);
        desk.bundles.bundles[now].takesFiles = false;
        desk.bundles.places[*notes.bundleIdentifier] = now;
        QVERIFY(!desk.launcher.takesFiles(notes));
    }

    void quittingAsksEveryInstance()
    {
        NotesDesk desk;
        const auto first = desk.workspace.launch(notesIdentifier, notesPath);
        desk.workspace.launch(QStringLiteral("org.example.other"), QStringLiteral("/Applications/Other.app"));
        const auto second = desk.workspace.launch(notesIdentifier, QStringLiteral("/Applications/Copy.app"));
        QVERIFY(desk.launcher.canQuit(notes));
        desk.launcher.quit(notes);
        QCOMPARE(desk.workspace.terminated, (QList<RunningApplication>{first, second}));
    }

    void whatNobodyCanAskIsNotOfferedToQuit()
    {
        NotesDesk desk;
        const auto deaf = desk.workspace.launch(notesIdentifier, notesPath);
        desk.workspace.deaf = {deaf.id};
        QVERIFY(!desk.launcher.canQuit(notes));
        const auto other = desk.workspace.launch(notesIdentifier, notesPath);
        QVERIFY(desk.launcher.canQuit(notes));
        desk.launcher.quit(notes);
        QCOMPARE(desk.workspace.terminated, QList<RunningApplication>{other});
    }

    void whatGoesByAnotherIdentifierTodayQuitsToo()
    {
        NotesDesk desk;
        const AppShortcut before{
            QStringLiteral("/Applications/Before.app"), QStringLiteral("org.example.before"), QStringLiteral("Notes")};
        desk.bundles.places[*before.bundleIdentifier] = notesPath;
        const auto running = desk.workspace.launch(notesIdentifier, notesPath);
        QVERIFY(desk.launcher.canQuit(before));
        desk.launcher.quit(before);
        QCOMPARE(desk.workspace.terminated, QList<RunningApplication>{running});
    }

    void finderNeverQuitsUnderAnyIdentifier()
    {
        NotesDesk desk;
        const QString path = QStringLiteral("/usr/share/applications/files.app");
        desk.bundles.bundles[path] = {finder.bundleIdentifier, std::nullopt, std::nullopt};
        desk.workspace.launch(finder.bundleIdentifier.value(), path);
        desk.workspace.launch(QStringLiteral("org.example.files"), path);
        QVERIFY(!desk.launcher.canQuit({path, QStringLiteral("org.example.files"), QStringLiteral("Files")}));
    }

    void finderNeverQuits()
    {
        NotesDesk desk;
        desk.workspace.launch(finder.bundleIdentifier.value(), finder.path);
        QVERIFY(!desk.launcher.canQuit(finder));
        desk.launcher.quit(finder);
        QVERIFY(desk.workspace.terminated.isEmpty());
    }

    void whatDoesNotRunCannotQuit()
    {
        NotesDesk desk;
        QVERIFY(!desk.launcher.canQuit(notes));
        desk.workspace.launch(notesIdentifier, notesPath);
        desk.workspace.running->first().isTerminated = true;
        QVERIFY(!desk.launcher.canQuit(notes));
        desk.workspace.running = std::nullopt;
        QVERIFY(!desk.launcher.canQuit(notes));
        desk.launcher.quit(notes);
        QVERIFY(desk.workspace.terminated.isEmpty());
    }

    void whatHasNoIdentifierCannotQuit()
    {
        NotesDesk desk;
        desk.workspace.launch(notesIdentifier, notesPath);
        const AppShortcut nameless{notesPath, std::nullopt, QStringLiteral("Notes")};
        QVERIFY(!desk.launcher.canQuit(nameless));
        desk.launcher.quit(nameless);
        QVERIFY(desk.workspace.terminated.isEmpty());
    }

    void theWeatherApplicationIsOpened()
    {
        NotesDesk desk;
        const QString path = QStringLiteral("/Applications/KWeather.app");
        desk.workspace.installed[QStringLiteral("com.apple.weather")] = path;
        desk.bundles.bundles[path] = {QStringLiteral("org.kde.kweather"), QStringLiteral("KWeather"), std::nullopt};
        QCOMPARE(desk.launcher.weatherDestination(), QStringLiteral("KWeather"));
        desk.launcher.openWeatherApp(place);
        QCOMPARE(desk.workspace.openings.last().path, path);
        const auto running = desk.workspace.launch(QStringLiteral("org.kde.kweather"), path);
        desk.launcher.openWeatherApp(place);
        QCOMPARE(desk.workspace.activated, QList<RunningApplication>{running});
        QVERIFY(desk.workspace.addresses.isEmpty());
    }

    void theWeatherApplicationFailsInSilence()
    {
        NotesDesk desk;
        desk.workspace.installed[QStringLiteral("com.apple.weather")] = notesPath;
        desk.launcher.openWeatherApp(place);
        static int lines;
        lines = 0;
        const auto before =
            qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) { ++lines; });
        desk.failLast(QStringLiteral("no"));
        qInstallMessageHandler(before);
        QCOMPARE(lines, 0);
    }

    void theWeatherApplicationHasItsUsualPlace()
    {
        NotesDesk desk;
        const QString path = QStringLiteral("/System/Applications/Weather.app");
        desk.bundles.bundles[path] = {};
        QCOMPARE(desk.launcher.weatherDestination(), QStringLiteral("Weather"));
        desk.launcher.openWeatherApp(place);
        QCOMPARE(desk.workspace.openings.last().path, path);
        QVERIFY(desk.workspace.addresses.isEmpty());
    }

    void withoutAWeatherApplicationTheForecastIsShownInTheBrowser()
    {
        NotesDesk desk;
        QCOMPARE(desk.launcher.weatherDestination(), QStringLiteral("open-meteo.com"));
        desk.launcher.openWeatherApp(place);
        QCOMPARE(desk.workspace.addresses,
            QList<QUrl>{QUrl(QStringLiteral("https://open-meteo.com/en/docs?latitude=52.52&longitude=-13.405"))});
        QVERIFY(desk.workspace.openings.isEmpty());
    }
};

MOORLINE_TEST(DropAndQuitTest);
#include "DropAndQuitTest.moc"
