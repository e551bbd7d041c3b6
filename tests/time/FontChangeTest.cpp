#include "fakes/FakeClock.h"
#include "fakes/SettingsGround.h"
#include "harness/FontScope.h"
#include "harness/TestCase.h"
#include "time/CalendarWidget.h"
#include "time/ClockWidget.h"
#include "time/MonthCounterWidget.h"
#include "time/TimeKeeper.h"

using namespace moorline;
using namespace moorline::test;

/// What a change of the desktop's font does to the widgets that tell the time.
class FontChangeTest final : public TestCase {
    Q_OBJECT
private Q_SLOTS:
    void theClockTakesTheSizeOfItsTexts()
    {
        SettingsGround ground;
        const SettingsStore store(ground.context(m_clock));
        verifyFollowsTheFont([&] { return std::make_unique<ClockWidget>(store, m_keeper); });
    }

    void theCalendarTakesTheSizeOfItsTexts()
    {
        verifyFollowsTheFont([this] { return std::make_unique<CalendarWidget>(m_keeper); });
    }

    void theCounterTakesTheSizeOfItsTexts()
    {
        verifyFollowsTheFont([this] { return std::make_unique<MonthCounterWidget>(m_keeper); });
    }

private:
    FakeClock m_clock;
    TimeKeeper m_keeper{m_clock};
};

MOORLINE_TEST(FontChangeTest);
#include "FontChangeTest.moc"
