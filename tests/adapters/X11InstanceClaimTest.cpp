#include "platform/linux/x11/X11InstanceClaim.h"

#include "harness/TestCase.h"
#include "platform/linux/x11/XConnection.h"

using namespace moorline;
using namespace moorline::test;

namespace {

/// What each program has for itself.
struct Bar {
    std::unique_ptr<XConnection> connection = XConnection::open();
    X11InstanceClaim claim{*connection};
};

} // namespace

class X11InstanceClaimTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void theSecondIsNotTheFirst()
    {
        Bar first;
        Bar second;
        QVERIFY(first.claim.take());
        QVERIFY(first.claim.take());
        QVERIFY(!second.claim.take());
        QVERIFY(!second.claim.take());
    }

    void theClaimEndsWithItsConnection()
    {
        auto first = std::make_unique<Bar>();
        QVERIFY(first->claim.take());
        first.reset();
        Bar second;
        QTRY_VERIFY(second.claim.take());
    }

    void whoWasRefusedLeavesTheClaimAlone()
    {
        Bar first;
        QVERIFY(first.claim.take());
        {
            Bar second;
            QVERIFY(!second.claim.take());
        }
        Bar third;
        QVERIFY(!third.claim.take());
    }
};

MOORLINE_TEST(X11InstanceClaimTest);

#include "X11InstanceClaimTest.moc"
