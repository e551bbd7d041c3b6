#include "chrome/BarHolds.h"

#include "harness/TestCase.h"

#include <QSignalSpy>
#include <memory>
#include <optional>

using namespace moorline;
using namespace moorline::test;

namespace {

class BarHoldsTest final : public TestCase {
    Q_OBJECT

private Q_SLOTS:
    void isHeldAsLongAsOneTokenLives()
    {
        BarHolds holds;
        QSignalSpy changes(&holds, &BarHolds::heldChanged);
        QVERIFY(!holds.isHeld());
        {
            const auto first = holds.take();
            {
                const auto second = holds.take();
                QVERIFY(holds.isHeld());
            }
            QVERIFY(holds.isHeld());
            QCOMPARE(changes.size(), 1);
        }
        QVERIFY(!holds.isHeld());
        QCOMPARE(changes.size(), 2);
    }

    void aTokenThatIsMovedHoldsOnce()
    {
        BarHolds holds;
        BarHolds::Token kept;
        {
            auto token = holds.take();
            kept = std::move(token);
        }
        QVERIFY(holds.isHeld());
        {
            const BarHolds::Token moved = std::move(kept);
        }
        QVERIFY(!holds.isHeld());
    }

    void aTokenMayOutliveWhatItHolds()
    {
        auto holds = std::make_unique<BarHolds>();
        std::optional token = holds->take();
        holds.reset();
        token.reset();
    }
};

MOORLINE_TEST(BarHoldsTest);

} // namespace

#include "BarHoldsTest.moc"
