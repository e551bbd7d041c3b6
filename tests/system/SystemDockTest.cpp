#include "system/SystemDock.h"
#include "fakes/FakePreferences.h"
#include "fakes/FakeScreens.h"
#include "fakes/FakeSystem.h"
#include "fakes/FakeWindowServer.h"
#include "harness/Answer.h"
#include "harness/TestCase.h"

#include <limits>

using namespace moorline;

namespace {

const QString domain = QStringLiteral("com.apple.dock");

WindowDescription dockWindow()
{
    return {QStringLiteral("Dock"), 300, test::FakeWindowServer::dockLevel, QRectF(0, 830, 1440, 70)};
}

} // namespace

class SystemDockTest final : public test::TestCase {
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_preferences = {};
        m_server = std::make_unique<test::FakeWindowServer>();
        m_control = std::make_unique<test::FakeSystemDockControl>();
        m_settings = std::make_unique<test::FakeSystemSettings>();
    }

    void orientationIsWhatTheDockSays_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<SystemDock::Orientation>("expected");
        using enum SystemDock::Orientation;
        QTest::newRow("left") << QVariant(QStringLiteral("left")) << left;
        QTest::newRow("right") << QVariant(QStringLiteral("right")) << right;
        QTest::newRow("bottom") << QVariant(QStringLiteral("bottom")) << bottom;
        QTest::newRow("top") << QVariant(QStringLiteral("top")) << bottom;
        QTest::newRow("other case") << QVariant(QStringLiteral("Left")) << bottom;
        QTest::newRow("empty") << QVariant(QString()) << bottom;
        QTest::newRow("missing") << QVariant() << bottom;
        QTest::newRow("number") << QVariant(1) << bottom;
        QTest::newRow("list") << QVariant(QVariantList{QStringLiteral("left")}) << bottom;
    }

    void orientationIsWhatTheDockSays()
    {
        QFETCH(QVariant, value);
        m_preferences.domains[domain] = {{QStringLiteral("orientation"), value}};
        QTEST(dock().orientation(), "expected");
    }

    void dockThatCannotBeAskedIsAtTheBottomAndInTheWay()
    {
        QCOMPARE(dock().orientation(), SystemDock::Orientation::bottom);
        QVERIFY(dock().conflictsWithDockBar());
        QVERIFY(dock().isRevealed());
    }

    void dockConflictsWhenItLiesAtTheBottomForGood_data()
    {
        QTest::addColumn<QString>("orientation");
        QTest::addColumn<bool>("autohide");
        QTest::addColumn<bool>("expected");
        QTest::newRow("bottom") << QStringLiteral("bottom") << false << true;
        QTest::newRow("bottom, hiding") << QStringLiteral("bottom") << true << false;
        QTest::newRow("left") << QStringLiteral("left") << false << false;
        QTest::newRow("left, hiding") << QStringLiteral("left") << true << false;
        QTest::newRow("right") << QStringLiteral("right") << false << false;
        QTest::newRow("nowhere") << QString() << false << true;
    }

    void dockConflictsWhenItLiesAtTheBottomForGood()
    {
        QFETCH(QString, orientation);
        QFETCH(bool, autohide);
        m_preferences.setDock(orientation, autohide);
        QTEST(dock().conflictsWithDockBar(), "expected");
    }

    void dockWithoutAWordOnHidingNeverHides()
    {
        m_preferences.domains[domain] = {};
        QVERIFY(dock().conflictsWithDockBar());
        QVERIFY(dock().isRevealed());
    }

    void dockThatNeverHidesIsRevealedWithoutALookAtTheWindows()
    {
        m_preferences.setDock(QStringLiteral("bottom"), false);
        QVERIFY(dock().isRevealed());
        QCOMPARE(m_server->timesListed, 0);
    }

    void dockThatHidesIsRevealedByItsWindow_data()
    {
        QTest::addColumn<std::optional<QList<WindowDescription>>>("windows");
        QTest::addColumn<bool>("expected");
        const auto row = [](const char *name, const std::optional<QList<WindowDescription>> &windows, bool expected) {
            QTest::newRow(name) << windows << expected;
        };
        const auto changed = [](auto WindowDescription::*field, auto value) {
            WindowDescription window = dockWindow();
            window.*field = value;
            return QList{window};
        };
        row("its window", QList{dockWindow()}, true);
        row("its window among others", QList{WindowDescription(), dockWindow()}, true);
        row("no window", QList<WindowDescription>(), false);
        row("unknown windows", std::nullopt, false);
        row("its menu", changed(&WindowDescription::layer, test::FakeWindowServer::dockLevel + 1), false);
        row("its desktop layer", changed(&WindowDescription::layer, 18), false);
        row("no layer", changed(&WindowDescription::layer, std::nullopt), false);
        row("another program", changed(&WindowDescription::ownerName, QStringLiteral("Docker")), false);
        row("other case", changed(&WindowDescription::ownerName, QStringLiteral("dock")), false);
        row("no owner", changed(&WindowDescription::ownerName, std::nullopt), false);
        row("no bounds", changed(&WindowDescription::bounds, std::nullopt), true);
    }

    void dockThatHidesIsRevealedByItsWindow()
    {
        QFETCH(std::optional<QList<WindowDescription>>, windows);
        m_preferences.setDock(QStringLiteral("bottom"), true);
        m_server->windows = windows;
        QTEST(dock().isRevealed(), "expected");
    }

    void anotherProgramsDockAtTheBottomIsTheDock()
    {
        m_preferences.setDock(QStringLiteral("bottom"), true);
        WindowDescription panel = dockWindow();
        panel.ownerName = QStringLiteral("Panel");
        panel.kind = WindowKind::dock;
        m_server->windows = {panel};
        QVERIFY(dock().isRevealed());
        m_server->windows->first().bounds = QRectF(0, 892, 1440, 8);
        QVERIFY(!dock().isRevealed());
        m_server->windows->first().bounds = QRectF(0, 0, 1440, 70);
        QVERIFY(!dock().isRevealed());
        m_server->windows = {panel};
        m_screens.set({});
        QVERIFY(!dock().isRevealed());
    }

    void autoHideIsATruthValueAlsoAsText_data()
    {
        QTest::addColumn<QVariant>("autohide");
        QTest::addColumn<bool>("hides");
        for (const char *text : {"YES", "yes", "true", "True", "1", "2", "-1", "+7", "001", " 1", "  YES", "T"})
            QTest::addRow("'%s'", text) << QVariant(QString::fromLatin1(text)) << true;
        for (const char *text : {"NO", "no", "false", "0", "00", "-0", "", " ", "off", "on", "NOT", "x1"})
            QTest::addRow("'%s'", text) << QVariant(QString::fromLatin1(text)) << false;
        QTest::newRow("true") << QVariant(true) << true;
        QTest::newRow("false") << QVariant(false) << false;
        QTest::newRow("1") << QVariant(qlonglong(1)) << true;
        QTest::newRow("0") << QVariant(qlonglong(0)) << false;
        QTest::newRow("0.0") << QVariant(0.0) << false;
        QTest::newRow("list") << QVariant(QVariantList{true}) << false;
    }

    void autoHideIsATruthValueAlsoAsText()
    {
        QFETCH(QVariant, autohide);
        m_preferences.domains[domain] = {{QStringLiteral("autohide"), autohide}};
        QFETCH(bool, hides);
        QCOMPARE(dock().conflictsWithDockBar(), !hides);
    }

    void autoHideThatWorksOpensNothing()
    {
        dock().enableAutoHide();
        QCOMPARE(m_control->timesAutoHideEnabled, 1);
        QVERIFY(m_settings->opened.isEmpty());
    }

    void refusedAutoHideOpensTheSettings()
    {
        m_control->succeeds = false;
        dock().enableAutoHide();
        QCOMPARE(m_settings->opened, QList{SettingsPane::desktopAndDock});
    }

    void delayIsHandedOn_data()
    {
        QTest::addColumn<bool>("succeeds");
        QTest::newRow("taken") << true;
        QTest::newRow("refused") << false;
    }

    void delayIsHandedOn()
    {
        QFETCH(bool, succeeds);
        m_control->succeeds = succeeds;
        const test::Answer<bool> answer(dock().setAutoHideDelay(0.75));
        QVERIFY(answer.isThere());
        QCOMPARE(answer.value(), succeeds);
        QCOMPARE(m_control->delays, QList{0.75});
    }

    void aDelayThatIsNoTimeIsRefused_data()
    {
        QTest::addColumn<double>("delay");
        QTest::newRow("negative") << -0.1;
        QTest::newRow("infinite") << std::numeric_limits<double>::infinity();
        QTest::newRow("no number") << std::numeric_limits<double>::quiet_NaN();
    }

    void aDelayThatIsNoTimeIsRefused()
    {
        QFETCH(double, delay);
        const test::Answer<bool> answer(dock().setAutoHideDelay(delay));
        QVERIFY(answer.isThere());
        QVERIFY(!answer.value());
        QVERIFY(m_control->delays.isEmpty());
    }

    void noDelayAtAllIsOne()
    {
        const test::Answer<bool> answer(dock().setAutoHideDelay(0));
        QVERIFY(answer.value());
        QCOMPARE(m_control->delays, QList{0.0});
    }

private:
    SystemDock dock() { return {m_preferences, *m_server, m_screens, *m_control, *m_settings}; }

    test::FakePreferences m_preferences;
    test::FakeScreens m_screens;
    std::unique_ptr<test::FakeWindowServer> m_server;
    std::unique_ptr<test::FakeSystemDockControl> m_control;
    std::unique_ptr<test::FakeSystemSettings> m_settings;
};

MOORLINE_TEST(SystemDockTest);
#include "SystemDockTest.moc"
