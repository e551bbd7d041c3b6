#include "fakes/FakeSystem.h"

namespace moorline::test {

QCoro::Task<bool> FakeSystemDockControl::enableAutoHide()
{
    ++timesAutoHideEnabled;
    co_return succeeds;
}

QCoro::Task<bool> FakeSystemDockControl::setRevealDelay(double seconds)
{
    delays.append(seconds);
    co_return succeeds;
}

} // namespace moorline::test
