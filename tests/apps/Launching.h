#pragma once

#include "apps/AppLauncher.h"
#include "apps/SteadyRunningSet.h"
#include "fakes/FakeApplications.h"
#include "fakes/FakeClock.h"

namespace moorline::test {

/// A launcher and the system it works on.
struct Launching {
    Launching() = default;
    explicit Launching(FakeAppBundles &others)
        : launcher(context(others))
    {
    }

    FakeClock clock;
    FakeAppBundles bundles;
    FakeWorkspace workspace;
    FakeFileManager fileManager;
    SteadyRunningSet running{workspace, clock};
    AppLauncher launcher{context(bundles)};

private:
    [[nodiscard]] AppLauncher::Context context(FakeAppBundles &lent)
    {
        return {.bundles = lent,
            .workspace = workspace,
            .fileManager = fileManager,
            .clock = clock,
            .steadilyRunning = [this] { return running.applications(); }};
    }
};

} // namespace moorline::test
