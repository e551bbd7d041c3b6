#include "fakes/FakeApplications.h"

namespace moorline::test {

QCoro::Task<QList<InstalledBundle>> FakeAppBundles::installed()
{
    ++timesListed;
    // QCoro moves from what is no constant.
    co_return std::as_const(listed);
}

FakeBadgeSource::~FakeBadgeSource()
{
    while (answer({})) { }
}

QCoro::Task<QList<BadgeTile>> FakeBadgeSource::tiles()
{
    Promise<QList<BadgeTile>> promise;
    m_looks.append(promise);
    co_return co_await promise;
}

} // namespace moorline::test
