#include "platform/linux/x11/StackingOrder.h"
#include "harness/TestCase.h"

#include <cstring>

namespace {

using moorline::StackingOrder;
using Windows = QList<xcb_window_t>;

constexpr xcb_window_t root = 1;

template <typename Event>
xcb_generic_event_t generic(const Event &event)
{
    static_assert(sizeof(Event) <= sizeof(xcb_generic_event_t));
    xcb_generic_event_t untyped{};
    std::memcpy(&untyped, &event, sizeof event);
    return untyped;
}

xcb_generic_event_t created(xcb_window_t window)
{
    xcb_create_notify_event_t event{};
    event.response_type = XCB_CREATE_NOTIFY;
    event.parent = root;
    event.window = window;
    return generic(event);
}

xcb_generic_event_t gone(xcb_window_t window)
{
    xcb_destroy_notify_event_t event{};
    event.response_type = XCB_DESTROY_NOTIFY;
    event.event = root;
    event.window = window;
    return generic(event);
}

xcb_generic_event_t placedAbove(xcb_window_t window, xcb_window_t sibling, xcb_window_t receiver = root)
{
    xcb_configure_notify_event_t event{};
    event.response_type = XCB_CONFIGURE_NOTIFY;
    event.event = receiver;
    event.window = window;
    event.above_sibling = sibling;
    return generic(event);
}

xcb_generic_event_t reparented(xcb_window_t window, xcb_window_t parent)
{
    xcb_reparent_notify_event_t event{};
    event.response_type = XCB_REPARENT_NOTIFY;
    event.event = root;
    event.window = window;
    event.parent = parent;
    return generic(event);
}

xcb_generic_event_t circulated(xcb_window_t window, std::uint8_t place)
{
    xcb_circulate_notify_event_t event{};
    event.response_type = XCB_CIRCULATE_NOTIFY;
    event.event = root;
    event.window = window;
    event.place = place;
    return generic(event);
}

class StackingOrderTest final : public moorline::test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        order.reset({10, 20, 30});
    }

    void aNewWindowIsOnTop()
    {
        QVERIFY(order.apply(created(40)));
        QCOMPARE(order.windows(), (Windows{10, 20, 30, 40}));
    }

    void aWindowThatWasListedIsNotNew()
    {
        QVERIFY(!order.apply(created(20)));
        QCOMPARE(order.windows(), (Windows{10, 20, 30}));
    }

    void aDestroyedWindowIsGone()
    {
        QVERIFY(order.apply(gone(20)));
        QCOMPARE(order.windows(), (Windows{10, 30}));
        QVERIFY(!order.apply(gone(20)));
    }

    void aRaisedWindowLiesOnItsSibling()
    {
        QVERIFY(order.apply(placedAbove(10, 30)));
        QCOMPARE(order.windows(), (Windows{20, 30, 10}));
    }

    void aLoweredWindowLiesOnNone()
    {
        QVERIFY(order.apply(placedAbove(30, XCB_WINDOW_NONE)));
        QCOMPARE(order.windows(), (Windows{30, 10, 20}));
    }

    void aWindowThatOnlyMovesChangesNothing()
    {
        QVERIFY(!order.apply(placedAbove(20, 10)));
        QVERIFY(!order.apply(placedAbove(10, XCB_WINDOW_NONE)));
        QCOMPARE(order.windows(), (Windows{10, 20, 30}));
    }

    void whatAWindowIsToldOfItselfIsNotCountedTwice()
    {
        QVERIFY(!order.apply(placedAbove(10, 30, 10)));
        QCOMPARE(order.windows(), (Windows{10, 20, 30}));
    }

    void aWindowTakenIntoAFrameIsNoLongerOnTheStack()
    {
        QVERIFY(order.apply(reparented(20, 30)));
        QCOMPARE(order.windows(), (Windows{10, 30}));
        QVERIFY(order.apply(reparented(20, root)));
        QCOMPARE(order.windows(), (Windows{10, 30, 20}));
    }

    void circulationGoesToEitherEnd()
    {
        QVERIFY(order.apply(circulated(10, XCB_PLACE_ON_TOP)));
        QCOMPARE(order.windows(), (Windows{20, 30, 10}));
        QVERIFY(order.apply(circulated(30, XCB_PLACE_ON_BOTTOM)));
        QCOMPARE(order.windows(), (Windows{30, 20, 10}));
    }

    void eventsOfUnknownWindowsAreIgnored()
    {
        QVERIFY(!order.apply(placedAbove(99, 10)));
        QVERIFY(!order.apply(gone(99)));
        QCOMPARE(order.windows(), (Windows{10, 20, 30}));
    }

private:
    StackingOrder order{root};
};

MOORLINE_TEST(StackingOrderTest);

} // namespace

#include "StackingOrderTest.moc"
