#include "platform/linux/LinuxStatusBar.h"

#include "ForeignProgram.h"
#include "OlderTray.h"
#include "fakes/FakeClock.h"
#include "harness/TestCase.h"
#include "platform/linux/bus/Bus.h"
#include "platform/linux/x11/XConnection.h"

#include <QApplication>
#include <QMenu>
#include <QToolTip>

using namespace moorline;
using namespace moorline::test;
using namespace std::chrono_literals;

namespace {

const QString watcherName = QStringLiteral("org.kde.StatusNotifierWatcher");

/// A panel on the session bus that shows what it is told of.
class Panel final {
public:
    Panel()
    {
        m_bus.adopt(QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("panel")));
        m_object = std::make_unique<BusObject>(m_bus, QStringLiteral("/StatusNotifierWatcher"),
            QList<BusInterface>{{watcherName,
                {{QStringLiteral("RegisterStatusNotifierItem"), {QStringLiteral("s")}, {},
                    [](const QVariantList &) { return QVariantList(); }}},
                [] {
                    return QVariantMap{{QStringLiteral("IsStatusNotifierHostRegistered"), true}};
                }}});
        isThere = QDBusConnection(m_bus.connection()).registerService(watcherName);
    }
    ~Panel()
    {
        m_object.reset();
        QDBusConnection::disconnectFromBus(QStringLiteral("panel"));
    }

    bool isThere = false;

private:
    Bus m_bus;
    std::unique_ptr<BusObject> m_object;
};

} // namespace

class LinuxStatusBarTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_connection = XConnection::open();
        QVERIFY(m_connection);
        m_clock = std::make_unique<FakeClock>();
        m_bus = std::make_unique<Bus>();
        m_bar = std::make_unique<LinuxStatusBar>(*m_bus, *m_clock, m_connection.get());
    }

    void cleanup()
    {
        m_bar.reset();
        m_bus.reset();
        m_connection.reset();
        QDBusConnection::disconnectFromBus(QStringLiteral("program"));
        TestCase::cleanup();
    }

    void theOlderTrayIsUsedAfterASecondWithoutAnother()
    {
        OlderTray tray(OlderTray::Kind::plain);
        m_bar->show(item());
        m_clock->advance(999ms);
        QTest::qWait(20);
        QVERIFY(tray.asked().isEmpty());
        m_clock->advance(1ms);
        QTRY_COMPARE(tray.asked().size(), 1);
    }

    void theTrayOfTheBusIsPreferred()
    {
        OlderTray tray(OlderTray::Kind::plain);
        auto panel = std::make_unique<Panel>();
        QVERIFY(panel->isThere);
        openBus();
        m_bar->show(item());
        QTRY_COMPARE(m_clock->runningTimers(), 0);
        m_clock->advance(60s);
        QTest::qWait(20);
        QVERIFY(tray.asked().isEmpty());

        panel.reset();
        QTRY_COMPARE(m_clock->runningTimers(), 1);
        m_clock->advance(1s);
        QTRY_COMPARE(tray.asked().size(), 1);

        panel = std::make_unique<Panel>();
        QTRY_VERIFY(!tray.exists(tray.asked().first()));
    }

    void aPanelThatStartsAnewIsWaitedFor()
    {
        OlderTray tray(OlderTray::Kind::plain);
        auto panel = std::make_unique<Panel>();
        openBus();
        m_bar->show(item());
        QTRY_COMPARE(m_clock->runningTimers(), 0);
        panel.reset();
        QTRY_COMPARE(m_clock->runningTimers(), 1);
        m_clock->advance(900ms);
        panel = std::make_unique<Panel>();
        QTRY_COMPARE(m_clock->runningTimers(), 0);
        m_clock->advance(60s);
        QTest::qWait(20);
        QVERIFY(tray.asked().isEmpty());
    }

    void withoutAServerThereIsNoOlderTray()
    {
        m_bar = std::make_unique<LinuxStatusBar>(*m_bus, *m_clock, nullptr);
        m_bar->show(item());
        m_clock->advance(60s);
        QCOMPARE(m_clock->runningTimers(), 0);
    }

    void thePictureIsTheSymbolInItsColour()
    {
        OlderTray tray(OlderTray::Kind::transparent);
        m_bar->show(item());
        m_clock->advance(1s);
        QTRY_COMPARE(tray.asked().size(), 1);
        const xcb_window_t window = tray.asked().first();
        tray.take(window, {0, 0, 22, 22});
        QTRY_VERIFY(colors(tray.picture(window)).contains(QColor(166, 166, 166)));
        QCOMPARE(tray.picture(window).pixelColor(0, 0).alpha(), 0);
    }

    void theNameIsShownWhereThePointerRests()
    {
        OlderTray tray(OlderTray::Kind::plain);
        const ForeignProgram hand;
        hand.movePointer({700, 700});
        m_bar->show(item());
        m_clock->advance(1s);
        QTRY_COMPARE(tray.asked().size(), 1);
        const xcb_window_t window = tray.asked().first();
        tray.take(window, {0, 0, 22, 22});
        hand.movePointer(tray.frame(window).center());
        QTRY_COMPARE(m_clock->runningTimers(), 1);
        m_clock->advance(699ms);
        QVERIFY(!QToolTip::isVisible());
        m_clock->advance(1ms);
        QTRY_VERIFY(QToolTip::isVisible());
        QCOMPARE(QToolTip::text(), QStringLiteral("Moorline"));
        hand.movePointer({700, 700});
        QTRY_VERIFY(!QToolTip::isVisible());
    }

    void aPressOpensTheMenu()
    {
        OlderTray tray(OlderTray::Kind::plain);
        m_bar->show(item());
        m_clock->advance(1s);
        QTRY_COMPARE(tray.asked().size(), 1);
        const xcb_window_t window = tray.asked().first();
        tray.take(window, {0, 0, 22, 22});
        const ForeignProgram hand;
        hand.click(tray.frame(window).center());
        QTRY_VERIFY(QApplication::activePopupWidget());
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        QVERIFY(menu);
        QCOMPARE(menu->actions().first()->text(), QStringLiteral("Quit"));
        menu->close();
        QTRY_VERIFY(!QApplication::activePopupWidget());
    }

private:
    void openBus()
    {
        m_bus->adopt(QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("program")));
        QVERIFY(m_bus->isOpen());
    }

    [[nodiscard]] static StatusBarItem item()
    {
        return {
            .name = QStringLiteral("Moorline"),
            .symbol = QStringLiteral("dock.rectangle"),
            .color = QColor(166, 166, 166),
            .menu = [] { return Menu{{.title = QStringLiteral("Quit"), .action = [] {}}}; },
        };
    }

    [[nodiscard]] static QList<QColor> colors(const QImage &image)
    {
        QList<QColor> all;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                all.append(image.pixelColor(x, y));
        }
        return all;
    }

    std::unique_ptr<XConnection> m_connection;
    std::unique_ptr<FakeClock> m_clock;
    std::unique_ptr<Bus> m_bus;
    std::unique_ptr<LinuxStatusBar> m_bar;
};

MOORLINE_TEST(LinuxStatusBarTest);

#include "LinuxStatusBarTest.moc"
