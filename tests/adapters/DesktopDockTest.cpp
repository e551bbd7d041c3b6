#include "freedesktop/EntryCatalogue.h"
#include "harness/TestCase.h"
#include "platform/linux/docks/DesktopDockControl.h"
#include "platform/linux/docks/DesktopDocks.h"
#include "platform/linux/docks/DesktopPreferences.h"
#include "platform/linux/docks/DockWindows.h"
#include "platform/linux/x11/ClientWindows.h"
#include "platform/linux/x11/XConnection.h"

#include <QCoroTask>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QProcess>
#include <QScopeGuard>
#include <QScreen>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <memory>

namespace {

using moorline::ClientWindows;
using moorline::DesktopDock;
using moorline::DesktopDockControl;
using moorline::DesktopDocks;
using moorline::DesktopPreferences;
using moorline::DockWindow;
using moorline::DockWindows;
using moorline::XConnection;
using Choice = moorline::DesktopDockRule::Choice;
using Hiding = DesktopDock::Hiding;
using Kind = DesktopDock::Kind;
using Edge = DesktopDock::Edge;

const QString plankSettings = QStringLiteral("net.launchpad.plank.dock.settings:/net/launchpad/plank/docks/dock1/");
const QString bottom = QStringLiteral("bottom center horizontal");

void run(const QString &program, const QStringList &arguments)
{
    if (QProcess::execute(program, arguments) != 0)
        qFatal("%s %s failed", qPrintable(program), qPrintable(arguments.join(u' ')));
}

void setPlank(const char *key, const QString &value)
{
    run(QStringLiteral("gsettings"), {QStringLiteral("set"), plankSettings, QLatin1StringView(key), value});
}

/// A program of the desktop that runs as long as this lives.
class RunningProgram final {
public:
    explicit RunningProgram(const QString &program, const QStringList &arguments = {})
    {
        m_process.setStandardErrorFile(QProcess::nullDevice());
        m_process.setStandardOutputFile(QProcess::nullDevice());
        m_process.start(program, arguments);
        if (!m_process.waitForStarted())
            qFatal("%s does not start", qPrintable(program));
    }
    ~RunningProgram() { stop(); }
    RunningProgram(const RunningProgram &) = delete;
    RunningProgram &operator=(const RunningProgram &) = delete;

    void stop()
    {
        m_process.terminate();
        // Plank forgets a request to end that comes while it starts.
        if (!m_process.waitForFinished(stopTime)) {
            m_process.kill();
            m_process.waitForFinished();
        }
    }

private:
    static constexpr int stopTime = 1000;

    QProcess m_process;
};

std::shared_ptr<const moorline::EntryCatalogue> noEntries()
{
    return std::make_shared<moorline::EntryCatalogue>();
}

/// The dock that concerns the bar; for none, one that hides and has no name.
Choice concerning(const DesktopDocks &docks)
{
    return docks.concerningDock().value_or(Choice());
}

/// The docks of a real desktop come and go beside the program under test.
class DesktopDockTest final : public moorline::test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        run(QStringLiteral("gsettings"), {QStringLiteral("reset-recursively"), plankSettings});
        run(QStringLiteral("xdotool"), {QStringLiteral("mousemove"), QStringLiteral("700"), QStringLiteral("300")});
        m_connection = XConnection::open();
        QVERIFY(m_connection);
        m_clients = std::make_unique<ClientWindows>(*m_connection);
        m_windows = std::make_unique<DockWindows>(*m_clients);
        QTRY_COMPARE(m_windows->windows().size(), 0);
    }

    void cleanup()
    {
        m_windows.reset();
        m_clients.reset();
        m_connection.reset();
        TestCase::cleanup();
    }

    void withoutAnyPanelThereIsNone() { QVERIFY(desktopDocks().docks().isEmpty()); }

    void aPanelIsSeenWhileItReservesAnEdge_data()
    {
        QTest::addColumn<QString>("position");
        QTest::addColumn<Edge>("edge");

        QTest::newRow("bottom") << bottom << Edge::bottom;
        QTest::newRow("left") << QStringLiteral("center left vertical") << Edge::left;
        QTest::newRow("right") << QStringLiteral("center right vertical") << Edge::right;
    }

    void aPanelIsSeenWhileItReservesAnEdge()
    {
        QFETCH(QString, position);
        QFETCH(Edge, edge);
        const DesktopDocks docks = desktopDocks();
        RunningProgram panel(QStringLiteral("tint2"), tint2(position));
        QTRY_COMPARE(concerning(docks).dock.program, QStringLiteral("tint2"));
        QCOMPARE(concerning(docks).edge, edge);
        QVERIFY(!concerning(docks).hides);
        QCOMPARE(concerning(docks).dock.program, QStringLiteral("tint2"));
        panel.stop();
        QTRY_COMPARE(docks.concerningDock(), std::nullopt);
    }

    void aPanelAtTheTopIsNoDock()
    {
        const DesktopDocks docks = desktopDocks();
        const RunningProgram panel(QStringLiteral("tint2"), tint2(QStringLiteral("top center horizontal")));
        QTRY_COMPARE(onlyWindow().strut, QMargins(0, 40, 0, 0));
        QCOMPARE(docks.concerningDock(), std::nullopt);
    }

    void aPanelThatHidesIsNotInTheWayEvenWhileItShowsItself()
    {
        const DesktopDocks docks = desktopDocks();
        const RunningProgram panel(QStringLiteral("tint2"), tint2(bottom, "autohide = 1\nautohide_height = 4\n"));
        QTRY_COMPARE(onlyWindow().strut.bottom(), 4);
        QTRY_COMPARE(docks.concerningDock(), std::nullopt);
        run(QStringLiteral("xdotool"), {QStringLiteral("mousemove"), QStringLiteral("700"), QStringLiteral("899")});
        QTRY_COMPARE(onlyWindow().strut.bottom(), 40);
        QCOMPARE(docks.concerningDock(), std::nullopt);
    }

    void aPanelThatReservesNothingIsNotInTheWay()
    {
        const DesktopDocks docks = desktopDocks();
        const RunningProgram panel(QStringLiteral("tint2"), tint2(bottom, "strut_policy = none\n"));
        QTRY_COMPARE(onlyWindow().frame.height(), 40);
        QCOMPARE(docks.concerningDock(), std::nullopt);
    }

    void thePanelAtTheBottomCountsBeforeTheOneAtTheSide()
    {
        const DesktopDocks docks = desktopDocks();
        const RunningProgram side(QStringLiteral("tint2"), tint2(QStringLiteral("center left vertical")));
        QTRY_COMPARE(concerning(docks).edge, Edge::left);
        RunningProgram panel(QStringLiteral("tint2"), tint2(bottom));
        QTRY_COMPARE(concerning(docks).edge, Edge::bottom);
        panel.stop();
        QTRY_COMPARE(concerning(docks).edge, Edge::left);
    }

    void aPanelTakesNoChanges()
    {
        DesktopDocks docks = desktopDocks();
        const RunningProgram panel(QStringLiteral("tint2"), tint2(bottom));
        QTRY_COMPARE(concerning(docks).dock.program, QStringLiteral("tint2"));
        DesktopDockControl control(docks);
        QVERIFY(!QCoro::waitFor(control.enableAutoHide()));
        QVERIFY(!QCoro::waitFor(control.setRevealDelay(0.5)));
    }

    void planksItemsAreItsTiles()
    {
        const QString launchers = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
            + QStringLiteral("/plank/dock1/launchers/");
        const auto write = [&](const char *name, const QByteArray &launcher) {
            QDir().mkpath(launchers);
            QFile file(launchers + QLatin1StringView(name));
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write("[PlankDockItemPreferences]\nLauncher=" + launcher + '\n');
        };
        write("clock.dockitem", "docklet://clock");
        write("own.dockitem", "file:///usr/share/applications/plank.desktop");
        setPlank("dock-items", QStringLiteral("['clock.dockitem', 'own.dockitem']"));
        const DesktopDocks docks = desktopDocks();
        const DesktopPreferences preferences(docks, noEntries, {});
        const auto tiles = [&] {
            return preferences.open(QStringLiteral("com.apple.dock"))
                ->value(QStringLiteral("persistent-apps"))
                .toList();
        };
        QVERIFY(tiles().isEmpty());
        const RunningProgram plank(QStringLiteral("plank"));
        QTRY_COMPARE(tiles().size(), 1);
        const QVariantMap tile = tiles().first().toMap().value(QStringLiteral("tile-data")).toMap();
        QCOMPARE(tile.value(QStringLiteral("file-label")).toString(), QStringLiteral("plank"));
        QCOMPARE(tile.value(QStringLiteral("file-data")).toMap().value(QStringLiteral("_CFURLString")).toString(),
            QStringLiteral("file:///usr/share/applications/plank.desktop"));
    }

    void plankIsTheDockWhileItRuns()
    {
        setPlank("hide-mode", QStringLiteral("none"));
        const DesktopDocks docks = desktopDocks();
        const DesktopPreferences preferences(docks, noEntries);
        QCOMPARE(docks.concerningDock(), std::nullopt);
        RunningProgram plank(QStringLiteral("plank"));
        QTRY_COMPARE(concerning(docks).dock.kind, Kind::plank);
        QTRY_VERIFY(!concerning(docks).hides);
        QCOMPARE(concerning(docks).dock.program, QStringLiteral("plank"));
        const auto domain = preferences.open(QStringLiteral("com.apple.dock"));
        QCOMPARE(domain->value(QStringLiteral("orientation")), QVariant(QStringLiteral("bottom")));
        QCOMPARE(domain->value(QStringLiteral("autohide")), QVariant(false));
        setPlank("position", QStringLiteral("left"));
        QTRY_COMPARE(domain->value(QStringLiteral("orientation")), QVariant(QStringLiteral("left")));
        plank.stop();
        QTRY_COMPARE(docks.concerningDock(), std::nullopt);
    }

    void planksModesSayFromWhatItHides_data()
    {
        QTest::addColumn<QString>("mode");
        QTest::addColumn<Hiding>("hiding");
        QTest::newRow("auto") << QStringLiteral("auto") << Hiding::byItself;
        for (const char *mode : {"intelligent", "dodge-maximized", "window-dodge", "dodge-active"})
            QTest::newRow(mode) << QString::fromLatin1(mode) << Hiding::fromWindows;
    }

    void planksModesSayFromWhatItHides()
    {
        QFETCH(QString, mode);
        QFETCH(Hiding, hiding);
        setPlank("hide-mode", QStringLiteral("none"));
        const DesktopDocks docks = desktopDocks();
        const RunningProgram plank(QStringLiteral("plank"));
        QTRY_COMPARE(concerning(docks).dock.hiding, Hiding::never);
        setPlank("hide-mode", mode);
        QTRY_COMPARE(concerning(docks).dock.hiding, hiding);
        QCOMPARE(concerning(docks).dock.kind, Kind::plank);
    }

    void plankClearsTheSpaceWhenItIsMadeToHide()
    {
        setPlank("hide-mode", QStringLiteral("none"));
        DesktopDocks docks = desktopDocks();
        const RunningProgram plank(QStringLiteral("plank"));
        QTRY_VERIFY(onlyWindow().strut.bottom() > 0);
        QTRY_VERIFY(!concerning(docks).hides);
        DesktopDockControl control(docks);
        QVERIFY(QCoro::waitFor(control.enableAutoHide()));
        QVERIFY(concerning(docks).hides);
        QTRY_COMPARE(onlyWindow().strut, QMargins());
    }

    void planksRevealDelayIsKeptInMilliseconds()
    {
        DesktopDocks docks = desktopDocks();
        const RunningProgram plank(QStringLiteral("plank"));
        QTRY_COMPARE(concerning(docks).dock.kind, Kind::plank);
        DesktopDockControl control(docks);
        QVERIFY(QCoro::waitFor(control.setRevealDelay(0.25)));
        QCOMPARE(concerning(docks).dock.revealDelay, 0.25);
        QTRY_COMPARE(plankValue("unhide-delay"), QStringLiteral("250"));
    }

    void aPanelBelowAHidingPlankIsWhatIsInTheWay()
    {
        setPlank("hide-mode", QStringLiteral("auto"));
        DesktopDocks docks = desktopDocks();
        const RunningProgram plank(QStringLiteral("plank"));
        QTRY_COMPARE(concerning(docks).dock.kind, Kind::plank);
        QTRY_VERIFY(concerning(docks).hides);
        RunningProgram panel(QStringLiteral("tint2"), tint2(bottom));
        QTRY_COMPARE(concerning(docks).dock.program, QStringLiteral("tint2"));
        QVERIFY(!concerning(docks).hides);
        QVERIFY(!docks.makeHide(concerning(docks).dock));
        panel.stop();
        QTRY_COMPARE(concerning(docks).dock.kind, Kind::plank);
    }

    void onlyTheDockThatConcernsTheBarTakesTheDelay()
    {
        setPlank("hide-mode", QStringLiteral("auto"));
        DesktopDocks docks = desktopDocks();
        DesktopDockControl control(docks);
        const RunningProgram plank(QStringLiteral("plank"));
        QTRY_COMPARE(concerning(docks).dock.kind, Kind::plank);
        QTRY_VERIFY(concerning(docks).hides);
        QVERIFY(QCoro::waitFor(control.setRevealDelay(0.25)));
        RunningProgram panel(QStringLiteral("tint2"), tint2(bottom));
        QTRY_COMPARE(concerning(docks).dock.program, QStringLiteral("tint2"));
        QVERIFY(!QCoro::waitFor(control.setRevealDelay(0.5)));
        panel.stop();
        QTRY_COMPARE(concerning(docks).dock.kind, Kind::plank);
        QCOMPARE(concerning(docks).dock.revealDelay, 0.25);
    }

    void everyDockTellsWhereItLies()
    {
        setPlank("hide-mode", QStringLiteral("none"));
        const DesktopDocks docks = desktopDocks();
        const RunningProgram panel(QStringLiteral("tint2"), tint2(bottom));
        QTRY_COMPARE(docks.docks().size(), 1);
        const QRectF bar = docks.docks().first().frame.value_or(QRectF());
        QTRY_COMPARE(bar.height(), 40.0);
        QCOMPARE(bar.bottom(), qreal(QGuiApplication::primaryScreen()->size().height()));
        const RunningProgram plank(QStringLiteral("plank"));
        QTRY_COMPARE(docks.docks().size(), 2);
        QCOMPARE(docks.docks().first().kind, Kind::plank);
        QVERIFY(docks.docks().first().frame);
    }

    void allOfPlanksDocksAreTold()
    {
        const QString plankDocks = QStringLiteral("net.launchpad.plank");
        const auto enable = [&](const char *docks) {
            run(QStringLiteral("gsettings"),
                {QStringLiteral("set"), plankDocks, QStringLiteral("enabled-docks"), QLatin1StringView(docks)});
        };
        const QString second = QString(plankSettings).replace(QStringLiteral("dock1"), QStringLiteral("dock2"));
        const auto setSecond = [&](const char *key, const char *value) {
            run(QStringLiteral("gsettings"),
                {QStringLiteral("set"), second, QLatin1StringView(key), QLatin1StringView(value)});
        };
        setPlank("hide-mode", QStringLiteral("auto"));
        setSecond("hide-mode", "none");
        setSecond("unhide-delay", "300");
        enable("['dock1', 'dock2']");
        const auto again = qScopeGuard([&] { enable("['dock1']"); });
        DesktopDocks docks = desktopDocks();
        const RunningProgram plank(QStringLiteral("plank"));
        QTRY_COMPARE(docks.docks().size(), 2);
        QCOMPARE(docks.docks().first().hiding, Hiding::byItself);
        QCOMPARE(docks.docks().last().hiding, Hiding::never);
        QCOMPARE(concerning(docks).dock.revealDelay, 0.3);
        DesktopDockControl control(docks);
        QVERIFY(QCoro::waitFor(control.enableAutoHide()));
        QCOMPARE(docks.docks().last().hiding, Hiding::byItself);
        QVERIFY(QCoro::waitFor(control.setRevealDelay(0.5)));
        // Now that both hide, the first is the dock.
        QCOMPARE(docks.docks().first().revealDelay, 0.5);
        QCOMPARE(docks.docks().last().revealDelay, 0.3);
    }

private:
    [[nodiscard]] DesktopDocks desktopDocks() const { return DesktopDocks(m_windows.get(), {}); }

    /// An empty description until there is exactly one dock window.
    [[nodiscard]] DockWindow onlyWindow() const
    {
        const auto windows = m_windows->windows();
        return windows.size() == 1 ? windows.first() : DockWindow();
    }

    /// Arguments for a panel of 40 device pixels at a place, in the words of its configuration file.
    [[nodiscard]] QStringList tint2(const QString &position, const QByteArray &more = {}) const
    {
        QFile file(m_folder.filePath(QString(position).replace(u' ', u'-')));
        const QByteArray content = "panel_items = C\ntime1_format = x\npanel_size = 100% 40\npanel_position = "
            + position.toUtf8() + '\n' + more;
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("cannot write %s", qPrintable(file.fileName()));
        return {QStringLiteral("-c"), file.fileName()};
    }

    static QString plankValue(const char *key)
    {
        QProcess process;
        process.start(QStringLiteral("gsettings"), {QStringLiteral("get"), plankSettings, QLatin1StringView(key)});
        process.waitForFinished();
        return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
    }

    QTemporaryDir m_folder;
    std::unique_ptr<XConnection> m_connection;
    std::unique_ptr<ClientWindows> m_clients;
    std::unique_ptr<DockWindows> m_windows;
};

MOORLINE_TEST(DesktopDockTest);

} // namespace

#include "DesktopDockTest.moc"
