#include "platform/linux/x11/X11PopupWindows.h"
#include "X11TestCase.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QSignalSpy>
#include <QWidget>
#include <xcb/shape.h>

namespace {

using moorline::PopupKind;
using moorline::PopupWindow;
using moorline::PopupWindows;
using moorline::X11PopupWindows;
using moorline::XConnection;

// As an X server numbers the keys of a keyboard of today.
constexpr std::uint8_t escapeKey = 9;
constexpr std::uint8_t controlKey = 37;
constexpr std::uint8_t letterKey = 38;
constexpr std::uint8_t shiftKey = 50;
constexpr std::uint8_t capsLockKey = 66;
constexpr std::uint8_t numLockKey = 77;

class InputCounter final : public QWidget {
public:
    int clicks = 0;
    QList<int> keys;

private:
    void mousePressEvent(QMouseEvent *) override { ++clicks; }
    void keyPressEvent(QKeyEvent *event) override { keys.append(event->key()); }
};

/// The popup of these tests is 300 by 150 points on a screen of 1440 by 900. Run under each window manager, and without
/// one, where a program gives the focus to itself.
class X11PopupWindowsTest final : public moorline::test::X11TestCase {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        X11TestCase::init();
        foreign->setCompositing(true);
        windows = std::make_unique<X11PopupWindows>(*connection);
        widget = std::make_unique<InputCounter>();
        popup = windows->adopt(*widget, PopupKind::popover);
        popup->setFrame(frame);
        QTRY_VERIFY(windows->isComposited());
    }

    void cleanup()
    {
        popup.reset();
        widget.reset();
        windows.reset();
        X11TestCase::cleanup();
    }

    void theFrameCountsFromTheBottomLeft()
    {
        show();
        QTRY_COMPARE(foreign->geometry(window()), QRect(100, 550, 300, 150));
        popup->setFrame({110, 220, 200, 100});
        QTRY_COMPARE(foreign->geometry(window()), QRect(110, 580, 200, 100));
    }

    void theWindowSaysWhatItIs_data()
    {
        QTest::addColumn<PopupKind>("kind");
        QTest::addColumn<QByteArray>("type");
        QTest::newRow("menu") << PopupKind::menu << QByteArrayLiteral("_NET_WM_WINDOW_TYPE_POPUP_MENU");
        QTest::newRow("popover") << PopupKind::popover << QByteArrayLiteral("_NET_WM_WINDOW_TYPE_POPUP_MENU");
        QTest::newRow("help tag") << PopupKind::helpTag << QByteArrayLiteral("_NET_WM_WINDOW_TYPE_TOOLTIP");
    }

    void theWindowSaysWhatItIs()
    {
        QFETCH(PopupKind, kind);
        QFETCH(QByteArray, type);
        renew(kind);
        show();
        QCOMPARE(foreign->atomNames(window(), "_NET_WM_WINDOW_TYPE"), QList<QByteArray>{type});
        QCOMPARE(foreign->bytes(window(), "WM_CLASS"), QByteArrayLiteral("moorline\0Moorline\0"));
        QVERIFY(!foreign->values(foreign->root(), "_NET_CLIENT_LIST").contains(window()));
    }

    void showingLeavesTheFocusWhereItIs()
    {
        const xcb_window_t other = showFocused();
        show();
        QCOMPARE(foreign->focus(), other);
        QVERIFY(!widget->isActiveWindow());
    }

    void theFocusComesBackToTheWindowItWasTakenFrom()
    {
        const xcb_window_t other = showFocused();
        show();
        popup->takeKeyboard();
        QTRY_COMPARE(foreign->focus(), window());
        QTRY_VERIFY(widget->isActiveWindow());
        type(escapeKey);
        QTRY_COMPARE(widget->keys, QList<int>{Qt::Key_Escape});
        popup->orderOut();
        QTRY_COMPARE(foreign->focus(), other);
        type(escapeKey);
        QTRY_COMPARE(foreign->keys(other), 1);
        QCOMPARE(widget->keys.size(), 1);
        if (foreign->hasWindowManager()) {
            // It may be behind: the window it names first, then none, is the one of the beginning.
            QTest::qWait(50);
            QVERIFY(QTest::qWaitFor([this, other] { return foreign->activeWindow() == other; }));
        }
    }

    void theFocusComesBackEachTime()
    {
        const xcb_window_t other = showFocused();
        for (int round = 0; round < 5; ++round) {
            renew(PopupKind::menu);
            show();
            popup->takeKeyboard();
            QTRY_VERIFY(widget->isActiveWindow());
            popup->orderOut();
            QTRY_COMPARE(foreign->focus(), other);
        }
    }

    void whoeverTookTheFocusMeanwhileKeepsIt()
    {
        const xcb_window_t first = showFocused();
        show();
        popup->takeKeyboard();
        QTRY_COMPARE(foreign->focus(), window());
        const xcb_window_t second = foreign->show({.frame = {700, 200, 300, 200}, .bypassesManager = true});
        foreign->focus(second);
        QTRY_COMPARE(foreign->focus(), second);
        popup->orderOut();
        QTRY_VERIFY(!foreign->isViewable(window()));
        QCOMPARE(foreign->focus(), second);
        QVERIFY(foreign->focus() != first);
    }

    void aWindowThatIsGoneDoesNoHarm()
    {
        const xcb_window_t other = showFocused();
        show();
        popup->takeKeyboard();
        QTRY_COMPARE(foreign->focus(), window());
        foreign->destroy(other);
        popup->orderOut();
        QTRY_VERIFY(!foreign->isViewable(window()));
        QVERIFY(foreign->focus() != window());
    }

    void takingTheKeyboardTellsOfNothingElse()
    {
        const xcb_window_t other = showFocused();
        show();
        QCoreApplication::processEvents();
        const QSignalSpy changes(connection.get(), &XConnection::propertyChanged);
        for (const char *name : {"FIRST", "SECOND"})
            foreign->setBytes(foreign->root(), name, "STRING", "changed");
        popup->takeKeyboard();
        QCOMPARE(foreign->focus(), window());
        QCOMPARE(changes.size(), 0);
        const auto isToldInOrder = [&] {
            QList<xcb_atom_t> names;
            for (const QList<QVariant> &change : changes)
                names.append(change.last().value<xcb_atom_t>());
            const qsizetype first = names.indexOf(foreign->atom("FIRST"));
            return first >= 0 && names.indexOf(foreign->atom("SECOND")) > first;
        };
        QTRY_VERIFY(isToldInOrder());
        popup->orderOut();
        QTRY_COMPARE(foreign->focus(), other);
    }

    void aPressOverAnotherProgramIsToldAndReachesIt()
    {
        const xcb_window_t below = showFocused();
        QList<QPointF> places;
        const auto watch = windows->watchPresses([&places](const QPointF &place) { places.append(place); });
        foreign->click({350, 300});
        QTRY_COMPARE(places, QList<QPointF>{QPointF(350, 600)});
        QTRY_COMPARE(foreign->clicks(below), 1);
    }

    void aPressOnTheWindowItselfIsToldToo()
    {
        show();
        QList<QPointF> places;
        const auto watch = windows->watchPresses([&places](const QPointF &place) { places.append(place); });
        foreign->click({150, 600});
        QTRY_COMPARE(places, QList<QPointF>{QPointF(150, 300)});
        QTRY_COMPARE(widget->clicks, 1);
    }

    void theWheelIsNoPress()
    {
        QList<QPointF> places;
        const auto watch = windows->watchPresses([&places](const QPointF &place) { places.append(place); });
        foreign->movePointer({700, 300});
        for (const auto button : {std::uint8_t(4), std::uint8_t(5), std::uint8_t(3)}) {
            foreign->setButton(button, true);
            foreign->setButton(button, false);
        }
        QTRY_COMPARE(places.size(), 1);
    }

    void aWatchThatIsGoneIsToldNothing()
    {
        int told = 0;
        auto watch = windows->watchPresses([&told](const QPointF &) { ++told; });
        foreign->click({700, 300});
        QTRY_COMPARE(told, 1);
        watch.reset();
        int later = 0;
        foreign->click({700, 300});
        const auto next = windows->watchPresses([&later](const QPointF &) { ++later; });
        foreign->click({710, 300});
        QTRY_COMPARE(later, 1);
        QCOMPARE(told, 1);
    }

    void aWatchMayGoWhileItIsTold()
    {
        std::unique_ptr<PopupWindows::Handle> watch;
        bool isTold = false;
        watch = windows->watchPresses([&](const QPointF &) {
            watch.reset();
            isTold = true;
        });
        foreign->click({700, 300});
        QTRY_VERIFY(isTold);
    }

    void compositionIsAFactThatChanges()
    {
        const QSignalSpy changes(windows.get(), &PopupWindows::compositionChanged);
        foreign->setCompositing(false);
        QTRY_VERIFY(!windows->isComposited());
        foreign->setCompositing(true);
        QTRY_VERIFY(windows->isComposited());
        QCOMPARE(changes.size(), 2);
    }

    void aHelpTagLetsThePointerThrough()
    {
        renew(PopupKind::helpTag);
        popup->setFrame({350, 600, 100, 100});
        const xcb_window_t below = showFocused();
        show();
        foreign->click({400, 250});
        QTRY_COMPARE(foreign->clicks(below), 1);
        QCOMPARE(widget->clicks, 0);
    }

    void aWindowThatIsShownAgainIsOnTop()
    {
        show();
        popup->orderOut();
        const xcb_window_t later = foreign->show({.frame = {0, 0, 1440, 900}, .bypassesManager = true});
        show();
        QTRY_VERIFY(foreign->isAbove(window(), later));
    }

    void escapeIsToldAndTakenWhoeverHasTheKeyboard()
    {
        const xcb_window_t other = showFocused();
        int told = 0;
        auto watch = windows->watchEscape([&told] { ++told; });
        QVERIFY(watch);
        type(escapeKey);
        QTRY_COMPARE(told, 1);
        type(letterKey);
        QTRY_COMPARE(foreign->keys(other), 1);
        QCOMPARE(foreign->focus(), other);
        watch.reset();
        // Once the server has heard of it: the key comes by way of another program.
        static_cast<void>(connection->selectionOwner(connection->atom("WM_S0")));
        type(escapeKey);
        QTRY_COMPARE(foreign->keys(other), 2);
        QCOMPARE(told, 1);
    }

    void escapeIsToldWithALockOnAndAModifierHeld()
    {
        int told = 0;
        const auto watch = windows->watchEscape([&told] { ++told; });
        for (const std::uint8_t held : {shiftKey, controlKey}) {
            foreign->setKey(held, true);
            type(escapeKey);
            foreign->setKey(held, false);
        }
        QTRY_COMPARE(told, 2);
        type(capsLockKey);
        type(escapeKey);
        type(capsLockKey);
        QTRY_COMPARE(told, 3);
        type(numLockKey);
        type(escapeKey);
        type(numLockKey);
        QTRY_COMPARE(told, 4);
    }

    void escapeIsNotToldWhileAnotherProgramHoldsTheKeyboard()
    {
        int told = 0;
        const auto watch = windows->watchEscape([&told] { ++told; });
        int presses = 0;
        const auto pressWatch = windows->watchPresses([&presses](const QPointF &) { ++presses; });
        foreign->grabKeyboard();
        type(escapeKey);
        foreign->click({700, 300});
        QTRY_COMPARE(presses, 1);
        QCOMPARE(told, 0);
    }

    void anEscapeWatchMayGoWhileItIsTold()
    {
        std::unique_ptr<PopupWindows::Handle> watch;
        bool isTold = false;
        watch = windows->watchEscape([&] {
            watch.reset();
            isTold = true;
        });
        type(escapeKey);
        QTRY_VERIFY(isTold);
    }

private:
    void renew(PopupKind kind)
    {
        popup.reset();
        widget = std::make_unique<InputCounter>();
        popup = windows->adopt(*widget, kind);
        popup->setFrame(frame);
    }

    void show()
    {
        popup->orderFront();
        QVERIFY(QTest::qWaitFor([this] { return foreign->isViewable(window()); }));
    }

    [[nodiscard]] xcb_window_t showFocused()
    {
        if (foreign->hasWindowManager())
            return showActive({.frame = {300, 200, 300, 200}});
        const xcb_window_t other = foreign->show({.frame = {300, 200, 300, 200}});
        foreign->focus(other);
        return other;
    }

    void type(std::uint8_t key) const
    {
        foreign->setKey(key, true);
        foreign->setKey(key, false);
    }

    xcb_window_t window() const { return static_cast<xcb_window_t>(widget->winId()); }

    const QRectF frame{100, 200, 300, 150};
    std::unique_ptr<X11PopupWindows> windows;
    std::unique_ptr<InputCounter> widget;
    std::unique_ptr<PopupWindow> popup;
};

MOORLINE_TEST(X11PopupWindowsTest);

} // namespace

#include "X11PopupWindowsTest.moc"
