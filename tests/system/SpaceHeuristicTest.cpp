#include "fakes/FakeScreens.h"
#include "fakes/FakeWindowServer.h"
#include "harness/TestCase.h"
#include "system/SpaceProbe.h"

#include <QCoreApplication>

using namespace moorline;

namespace {

constexpr qint64 otherProcess = 1;

/// A window of another program that fills the screen.
WindowDescription covering()
{
    return {QStringLiteral("Film"), otherProcess, 0, QRectF(0, 0, 1440, 900)};
}

WindowDescription menuBar()
{
    return {
        QStringLiteral("Window Server"), otherProcess, test::FakeWindowServer::mainMenuLevel, QRectF(0, 0, 1440, 24)};
}

template <typename Value>
WindowDescription with(WindowDescription window, Value WindowDescription::*field, Value value)
{
    window.*field = value;
    return window;
}

} // namespace

class SpaceHeuristicTest final : public test::TestCase {
    Q_OBJECT
private Q_SLOTS:
    void windowsDecide_data()
    {
        QTest::addColumn<QList<WindowDescription>>("windows");
        QTest::addColumn<bool>("expected");
        const auto row = [](const char *name, const QList<WindowDescription> &windows, bool expected) {
            QTest::newRow(name) << windows << expected;
        };
        const auto layer = [](const WindowDescription &window, std::optional<int> value) {
            return with(window, &WindowDescription::layer, value);
        };
        const auto bounds = [](const WindowDescription &window, std::optional<QRectF> value) {
            return with(window, &WindowDescription::bounds, value);
        };
        const auto owner = [](std::optional<qint64> value) {
            return with(covering(), &WindowDescription::ownerProcess, value);
        };
        constexpr int menuLevel = test::FakeWindowServer::mainMenuLevel;
        const auto barAt = [&](int level) { return QList{covering(), layer(menuBar(), level)}; };
        const auto barOf = [&](qreal width) { return QList{bounds(menuBar(), QRectF(0, 0, width, 24)), covering()}; };
        const auto at = [&](qreal x, qreal y, qreal width) {
            return QList{bounds(covering(), QRectF(x, y, width, 800))};
        };

        row("no window", {}, false);
        row("covered", {covering()}, true);
        row("menu bar", {menuBar(), covering()}, false);
        row("menu bar behind", {covering(), menuBar()}, false);
        row("menu bar alone", {menuBar()}, false);
        row("menu bar one level up", barAt(menuLevel + 1), false);
        row("no menu bar two levels up", barAt(menuLevel + 2), true);
        row("no menu bar one level down", barAt(menuLevel - 1), true);
        row("menu bar a little narrow", barOf(1436), false);
        row("too narrow for a menu bar", barOf(1435), true);
        row("menu bar without bounds", {covering(), bounds(menuBar(), std::nullopt)}, true);
        WindowDescription panel{
            .ownerProcess = 5, .layer = 20, .bounds = QRectF(0, 0, 1440, 28), .kind = WindowKind::dock};
        row("panel along the top", {covering(), panel}, false);
        row("panel half as long", {covering(), bounds(panel, QRectF(0, 0, 720, 28))}, true);
        row("panel along the bottom", {covering(), bounds(panel, QRectF(0, 872, 1440, 28))}, true);
        row("own window", {owner(QCoreApplication::applicationPid())}, false);
        row("nobody's window", {owner(std::nullopt)}, false);
        row("highest layer that covers", {layer(covering(), 19)}, true);
        row("floating", {layer(covering(), 20)}, false);
        row("below the desktop", {layer(covering(), -5)}, true);
        row("no layer", {layer(covering(), std::nullopt)}, false);
        row("no bounds", {bounds(covering(), std::nullopt)}, false);
        row("a little to the right", at(1.9, 0, 1440), true);
        row("to the right", at(2, 0, 1440), false);
        row("a little to the left", at(-1.9, 0, 1440), true);
        row("to the left", at(-2, 0, 1440), false);
        row("a little narrow", at(0, 0, 1438), true);
        row("narrow", at(0, 0, 1437.9), false);
        row("wider than the screen", at(0, 0, 3000), true);
        row("a little low", at(0, 2, 1440), true);
        row("low", at(0, 2.1, 1440), false);
        row("above the screen", at(0, -50, 1440), true);
        row("not as high as the screen", {bounds(covering(), QRectF(0, 0, 1440, 10))}, true);
    }

    void windowsDecide()
    {
        QFETCH(QList<WindowDescription>, windows);
        test::FakeWindowServer server;
        server.windows = windows;
        QTEST(SpaceProbe(server).looksFullScreen(m_screen), "expected");
    }

    void windowMayStayClearOfTheCameraHousing()
    {
        m_screen.safeAreaInsets.setTop(32);
        test::FakeWindowServer server;
        server.windows = QList{with(covering(), &WindowDescription::bounds, std::optional(QRectF(0, 34, 1440, 866)))};
        QVERIFY(SpaceProbe(server).looksFullScreen(m_screen));
        server.windows = QList{with(covering(), &WindowDescription::bounds, std::optional(QRectF(0, 35, 1440, 865)))};
        QVERIFY(!SpaceProbe(server).looksFullScreen(m_screen));
    }

    void unknownWindowsAreNoFullScreen()
    {
        test::FakeWindowServer server;
        server.windows = std::nullopt;
        QVERIFY(!SpaceProbe(server).looksFullScreen(m_screen));
    }

private:
    Screen m_screen = test::FakeScreens::screen({0, 0, 1440, 900});
};

MOORLINE_TEST(SpaceHeuristicTest);
#include "SpaceHeuristicTest.moc"
