#include "X11TestCase.h"
#include "platform/linux/x11/X11WindowServer.h"

#include <algorithm>

namespace {

using moorline::WindowDescription;
using moorline::X11WindowServer;

const QList<QByteArray> propertiesOfWindows{"_NET_WM_WINDOW_TYPE", "_NET_WM_STATE", "_NET_WM_DESKTOP",
    "WM_TRANSIENT_FOR", "WM_CLASS", "_NET_WM_PID", "_NET_FRAME_EXTENTS", "_GTK_FRAME_EXTENTS", "_NET_WM_STRUT_PARTIAL",
    "_NET_WM_STRUT"};
const QList<QByteArray> propertiesOfRoot{"_NET_ACTIVE_WINDOW", "_NET_CLIENT_LIST", "_NET_CLIENT_LIST_STACKING",
    "_NET_CURRENT_DESKTOP", "_NET_SUPPORTING_WM_CHECK"};

/// Any program may write anything into the properties of any window. Here the other program is the window manager, too.
class HostilePropertiesTest final : public moorline::test::X11TestCase {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        X11TestCase::init();
        server = std::make_unique<X11WindowServer>(*clients);
    }

    void cleanup()
    {
        server.reset();
        X11TestCase::cleanup();
    }

    void propertiesOfAWindowMayHoldAnything_data() { addValues(); }

    void propertiesOfAWindowMayHoldAnything()
    {
        QFETCH(QByteArray, type);
        QFETCH(QByteArray, bytes);
        QFETCH(bool, isWide);
        const xcb_window_t window = foreign->create({});
        for (const QByteArray &name : propertiesOfWindows)
            write(window, name, type, bytes, isWide);
        foreign->map(window);
        QTRY_COMPARE(server->onScreenWindows()->size(), 1);
        const WindowDescription listed = server->onScreenWindows()->first();
        QVERIFY(QRectF(-32768, -32768, 65536, 65536).contains(*listed.bounds));
        QVERIFY(!listed.ownerProcess || *listed.ownerProcess > 0);
    }

    void propertiesOfTheRootWindowMayHoldAnything_data() { addValues(); }

    void propertiesOfTheRootWindowMayHoldAnything()
    {
        QFETCH(QByteArray, type);
        QFETCH(QByteArray, bytes);
        QFETCH(bool, isWide);
        const xcb_window_t window = foreign->show({});
        for (const QByteArray &name : propertiesOfRoot)
            write(foreign->root(), name, type, bytes, isWide);
        QTRY_VERIFY(!hasWindowManager());
        QTRY_COMPARE(server->onScreenWindows()->size(), 1);
        manage({window});
        QTRY_VERIFY(hasWindowManager());
        QTRY_COMPARE(server->onScreenWindows()->size(), 1);
    }

    void aClientListOfWindowsThatAreGoneIsEmpty()
    {
        const xcb_window_t window = foreign->show({});
        manage({window, 0x7fffffff, XCB_WINDOW_NONE, window, foreign->root() + 1});
        QTRY_VERIFY(hasWindowManager());
        QTRY_COMPARE(server->onScreenWindows()->size(), 1);
    }

    void windowsMayVanishAtAnyMoment()
    {
        const xcb_window_t staying = foreign->show({});
        for (int round = 0; round < 40; ++round) {
            const xcb_window_t window = foreign->show({});
            manage({staying, window});
            if (round % 2 == 0)
                QTest::qWait(0);
            QVERIFY(server->onScreenWindows());
            foreign->destroy(window);
            QVERIFY(server->onScreenWindows());
        }
        QTRY_COMPARE(server->onScreenWindows()->size(), 1);
    }

    void windowsThatNameEachOtherAsParentsAreNoTrap()
    {
        const xcb_window_t first = foreign->show({});
        const xcb_window_t second = foreign->show({.transientFor = first});
        foreign->setValues(first, "WM_TRANSIENT_FOR", "WINDOW", {second});
        manage({first, second});
        QTRY_VERIFY(hasWindowManager());
        QCOMPARE(server->onScreenWindows()->size(), 2);
    }

    void withoutAWindowManagerEveryOrdinaryWindowIsListed()
    {
        (void)foreign->show({});
        (void)foreign->show({.bypassesManager = true});
        (void)foreign->create({});
        QTRY_COMPARE(server->onScreenWindows()->size(), 1);
        QCOMPARE(server->onScreenWindows()->first().ownerName, QStringLiteral("Probe"));
        QVERIFY(!hasWindowManager());
    }

    void aWindowManagerThatDiedIsNoMore()
    {
        const xcb_window_t proof = manage({foreign->show({})});
        QTRY_VERIFY(hasWindowManager());
        foreign->destroy(proof);
        QTRY_VERIFY(!hasWindowManager());
    }

private:
    /// Only of managed windows it is known whether they are full-screen.
    bool hasWindowManager() const
    {
        const auto windows = server->onScreenWindows();
        return std::any_of(windows->begin(), windows->end(),
            [](const WindowDescription &window) { return window.isFullScreen.has_value(); });
    }

    static void addValues()
    {
        QTest::addColumn<QByteArray>("type");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<bool>("isWide");
        const QByteArray types[] = {"CARDINAL", "ATOM", "WINDOW", "STRING", "UTF8_STRING"};
        for (const QByteArray &type : types) {
            QTest::addRow("%s, empty", type.constData()) << type << QByteArray() << true;
            QTest::addRow("%s, narrow", type.constData()) << type << QByteArray("\xff\xfe\x01") << false;
            QTest::addRow("%s, largest values", type.constData()) << type << QByteArray(48, '\xff') << true;
            QTest::addRow("%s, one value", type.constData()) << type << QByteArray(4, '\x7f') << true;
            QTest::addRow("%s, huge", type.constData()) << type << QByteArray(200'000, '\x01') << true;
        }
    }

    void write(
        xcb_window_t window, const QByteArray &name, const QByteArray &type, const QByteArray &bytes, bool isWide) const
    {
        if (!isWide)
            return foreign->setBytes(window, name, type, bytes);
        QList<std::uint32_t> values(bytes.size() / 4);
        std::copy_n(bytes.constData(), values.size() * 4, reinterpret_cast<char *>(values.data()));
        foreign->setValues(window, name, type, values);
    }

    /// The other program declares itself the window manager of these windows. Returns the window that proves it.
    xcb_window_t manage(const QList<std::uint32_t> &windows) const
    {
        const xcb_window_t proof = foreign->create({.bypassesManager = true});
        foreign->setValues(proof, "_NET_SUPPORTING_WM_CHECK", "WINDOW", {proof});
        foreign->setValues(foreign->root(), "_NET_CLIENT_LIST", "WINDOW", windows);
        foreign->setValues(foreign->root(), "_NET_CLIENT_LIST_STACKING", "WINDOW", windows);
        foreign->setValues(foreign->root(), "_NET_SUPPORTING_WM_CHECK", "WINDOW", {proof});
        return proof;
    }

    std::unique_ptr<X11WindowServer> server;
};

MOORLINE_TEST(HostilePropertiesTest);

} // namespace

#include "HostilePropertiesTest.moc"
