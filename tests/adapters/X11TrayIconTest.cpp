#include "platform/linux/x11/X11TrayIcon.h"

#include "ForeignProgram.h"
#include "OlderTray.h"
#include "harness/TestCase.h"
#include "platform/linux/x11/XConnection.h"

#include <QSignalSpy>

using namespace moorline;
using namespace moorline::test;

namespace {

/// Half of it red, the other half nothing.
QImage halfRed(int side)
{
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side / 2; ++x)
            image.setPixelColor(x, y, Qt::red);
    }
    return image;
}

/// Red that lets half of the ground through.
QImage veil(int side)
{
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(QColor(255, 0, 0, 128));
    return image;
}

} // namespace

Q_DECLARE_METATYPE(moorline::test::OlderTray::Kind)

class X11TrayIconTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_sides.clear();
        m_connection = XConnection::open();
        QVERIFY(m_connection);
    }

    void cleanup()
    {
        m_icon.reset();
        m_connection.reset();
        TestCase::cleanup();
    }

    void asksTheTrayToTakeItIn()
    {
        OlderTray tray(OlderTray::Kind::plain);
        makeIcon();
        QTRY_COMPARE(tray.asked().size(), 1);
        const xcb_window_t window = tray.asked().first();
        QCOMPARE(tray.text(window, "WM_NAME"), QByteArray("Moorline"));
        QCOMPARE(tray.text(window, "_NET_WM_NAME"), QByteArray("Moorline"));
        QCOMPARE(tray.text(window, "WM_CLASS"), QByteArray("moorline\0Moorline\0", 18));
        // The version of the protocol, and the wish to be shown.
        QCOMPARE(tray.numbers(window, "_XEMBED_INFO"), (QList<std::uint32_t>{0, 1}));
    }

    void isPaintedInTheSizeThatTheTrayGivesIt_data()
    {
        QTest::addColumn<OlderTray::Kind>("kind");
        QTest::addColumn<int>("depth");
        QTest::addColumn<QColor>("ground");
        QTest::newRow("plain") << OlderTray::Kind::plain << 24 << QColor(0, 0, 0x80);
        QTest::newRow("transparent") << OlderTray::Kind::transparent << 32 << QColor(Qt::transparent);
    }
    void isPaintedInTheSizeThatTheTrayGivesIt()
    {
        QFETCH(const OlderTray::Kind, kind);
        QFETCH(const int, depth);
        QFETCH(const QColor, ground);
        OlderTray tray(kind);
        makeIcon();
        QTRY_COMPARE(tray.asked().size(), 1);
        const xcb_window_t window = tray.asked().first();
        QCOMPARE(int(tray.depth(window)), depth);
        tray.take(window, {10, 5, 20, 30});
        QTRY_COMPARE(tray.picture(window).pixelColor(4, 15), QColor(Qt::red));
        const QImage picture = tray.picture(window);
        QCOMPARE(m_sides.last(), 20);
        QCOMPARE(picture.pixelColor(9, 5), QColor(Qt::red));
        // Beside the picture's own colour, and above and below the square.
        QCOMPARE(picture.pixelColor(10, 15), ground);
        QCOMPARE(picture.pixelColor(4, 4), ground);
        QCOMPARE(picture.pixelColor(4, 25), ground);

        tray.resize(window, {10, 5, 40, 40});
        QTRY_COMPARE(tray.picture(window).pixelColor(19, 39), QColor(Qt::red));
        QCOMPARE(tray.picture(window).pixelColor(20, 39), ground);
        QCOMPARE(m_sides.last(), 40);
    }

    void looksTheSameWhenAPartOfItWasCovered()
    {
        OlderTray tray(OlderTray::Kind::plain);
        makeIcon(veil);
        QTRY_COMPARE(tray.asked().size(), 1);
        const xcb_window_t window = tray.asked().first();
        tray.take(window, {0, 0, 20, 20});
        QTRY_VERIFY(tray.picture(window).pixelColor(10, 10).red() > 120);
        const QImage before = tray.picture(window);
        const auto paints = m_sides.size();

        const ForeignProgram other;
        const QRect half(tray.frame(window).topLeft(), QSize(10, 20));
        const xcb_window_t cover = other.show({.frame = half, .bypassesManager = true});
        QTRY_VERIFY(other.isViewable(cover));
        other.destroy(cover);
        QTRY_VERIFY(m_sides.size() > paints);
        QTRY_COMPARE(tray.picture(window), before);
    }

    void aHugeTrayGetsAPictureOfReasonableSize()
    {
        OlderTray tray(OlderTray::Kind::plain);
        makeIcon();
        QTRY_COMPARE(tray.asked().size(), 1);
        tray.take(tray.asked().first(), {0, 0, 3000, 3000});
        QTRY_VERIFY(m_sides.contains(128));
        QCOMPARE(*std::max_element(m_sides.begin(), m_sides.end()), 128);
    }

    void asksATrayThatComesLateAndComesAgain()
    {
        makeIcon();
        xcb_window_t first = XCB_WINDOW_NONE;
        {
            OlderTray tray(OlderTray::Kind::plain);
            QTRY_COMPARE(tray.asked().size(), 1);
            first = tray.asked().first();
            tray.take(first, {0, 0, 24, 24});
        }
        OlderTray tray(OlderTray::Kind::transparent);
        // Told of the end of the one and of the beginning of the other, it may ask the other twice; the last time
        // counts.
        QTRY_VERIFY(!tray.asked().isEmpty() && tray.depth(tray.asked().last()) == 32);
        QVERIFY(tray.asked().last() == first || !tray.exists(first));
    }

    void leavesATrayThatAnotherReplaces()
    {
        OlderTray tray(OlderTray::Kind::plain);
        makeIcon();
        QTRY_COMPARE(tray.asked().size(), 1);
        tray.take(tray.asked().first(), {0, 0, 24, 24});
        OlderTray another(OlderTray::Kind::plain);
        QTRY_COMPARE(another.asked().size(), 1);
        QTRY_VERIFY(!another.exists(tray.asked().first()));
    }

    void goesFromTheTrayWithItsEnd()
    {
        OlderTray tray(OlderTray::Kind::plain);
        makeIcon();
        QTRY_COMPARE(tray.asked().size(), 1);
        m_icon.reset();
        QTRY_VERIFY(!tray.exists(tray.asked().first()));
    }

    void tellsOfThePointer()
    {
        const ForeignProgram hand;
        hand.movePointer({700, 700});
        OlderTray tray(OlderTray::Kind::plain);
        makeIcon();
        QTRY_COMPARE(tray.asked().size(), 1);
        const xcb_window_t window = tray.asked().first();
        tray.take(window, {0, 0, 24, 24});
        QTRY_VERIFY(!m_sides.isEmpty());
        QSignalSpy entered(m_icon.get(), &X11TrayIcon::pointerEntered);
        QSignalSpy left(m_icon.get(), &X11TrayIcon::pointerLeft);
        QSignalSpy pressed(m_icon.get(), &X11TrayIcon::pressed);
        hand.movePointer(tray.frame(window).center());
        QTRY_COMPARE(entered.size(), 1);
        for (const std::uint8_t button : std::initializer_list<std::uint8_t>{1, 2, 3, 4}) {
            hand.setButton(button, true);
            hand.setButton(button, false);
        }
        QTRY_COMPARE(pressed.size(), 2);
        hand.movePointer({700, 700});
        QTRY_COMPARE(left.size(), 1);
        QCOMPARE(pressed.size(), 2);
    }

private:
    void makeIcon(const X11TrayIcon::Picture &picture = halfRed)
    {
        m_icon = std::make_unique<X11TrayIcon>(*m_connection, QStringLiteral("Moorline"), [this, picture](int side) {
            m_sides.append(side);
            return picture(side);
        });
    }

    QList<int> m_sides;
    std::unique_ptr<XConnection> m_connection;
    std::unique_ptr<X11TrayIcon> m_icon;
};

MOORLINE_TEST(X11TrayIconTest);

#include "X11TrayIconTest.moc"
