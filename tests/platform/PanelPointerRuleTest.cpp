#include "platform/PanelPointerRule.h"
#include "harness/TestCase.h"

using namespace moorline;

namespace {

using Answer = PanelPointerRule::Answer;
using Sight = PanelPointerRule::Sight;

const Sight inside{.isInside = true};
const Sight outside;
const Sight pressedInside{.isInside = true, .isPressed = true};
const Sight pressedOutside{.isPressed = true};
const Sight releasedInside{.isInside = true, .hasMoved = false};
const Sight releasedOutside{.hasMoved = false};
const Sight activeInside{.isInside = true, .isApplicationActive = true};
const Sight activeOutside{.isApplicationActive = true};

const Answer comes{.letsThrough = false, .enters = true, .moves = true};
const Answer goesOn{.letsThrough = false, .moves = true};
const Answer goes{.letsThrough = true, .leaves = true};
const Answer isTaken{.letsThrough = false};
const Answer isLetThrough{.letsThrough = true};
const Answer staysAsItIs;

} // namespace

class PanelPointerRuleTest final : public test::TestCase {
    Q_OBJECT
private Q_SLOTS:
    void thePointerComesMovesAndGoes()
    {
        PanelPointerRule rule;
        QCOMPARE(rule.see(outside), isLetThrough);
        QCOMPARE(rule.see(inside), comes);
        QCOMPARE(rule.see(inside), goesOn);
        QCOMPARE(rule.see(outside), goes);
        QCOMPARE(rule.see(outside), isLetThrough);
        QCOMPARE(rule.see(inside), comes);
    }

    void anActiveApplicationHearsOfThePointerByItself()
    {
        PanelPointerRule rule;
        QCOMPARE(rule.see(activeInside), isTaken);
        QCOMPARE(rule.see(activeOutside), isLetThrough);
    }

    void aDragFromThePanelKeepsItUntilTheButtonComesUp()
    {
        PanelPointerRule rule;
        (void)rule.see(inside);
        QCOMPARE(rule.see(pressedInside), isTaken);
        QCOMPARE(rule.see(pressedOutside), staysAsItIs);
        QCOMPARE(rule.see(releasedOutside), goes);
    }

    void aDragThatBeganElsewhereIsTakenOnceItIsInside()
    {
        PanelPointerRule rule;
        QCOMPARE(rule.see(pressedOutside), staysAsItIs);
        QCOMPARE(rule.see(pressedInside), isTaken);
    }

    void aButtonThatComesUpIsNoMove()
    {
        PanelPointerRule rule;
        (void)rule.see(inside);
        (void)rule.see(pressedInside);
        QCOMPARE(rule.see(releasedInside), isTaken);
        QCOMPARE(rule.see(inside), goesOn);
    }

    void aPointerThatIsLetGoOfInsideHasCome()
    {
        PanelPointerRule rule;
        (void)rule.see(pressedInside);
        QCOMPARE(rule.see(releasedInside), (Answer{.letsThrough = false, .enters = true}));
        QCOMPARE(rule.see(inside), goesOn);
    }

    void whoWasToldOfTheComingIsToldOfTheGoing()
    {
        PanelPointerRule rule;
        (void)rule.see(inside);
        QCOMPARE(rule.see(activeInside), isTaken);
        QCOMPARE(rule.see(activeOutside), goes);
        QCOMPARE(rule.see(activeOutside), isLetThrough);
    }
};

MOORLINE_TEST(PanelPointerRuleTest);
#include "PanelPointerRuleTest.moc"
