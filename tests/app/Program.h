#pragma once

#include "app/AppDelegate.h"
#include "fakes/FakePlatform.h"

namespace moorline::test {

/// A whole program on fakes.
struct Program {
    explicit Program(RunPlan plan)
        : delegate(platform.ports, std::move(plan),
            {
                .print = [this](const QString &line) { printed.append(line); },
                .terminate = [this] { ++terminations; },
            })
    {
    }

    FakePlatform platform;
    QStringList printed;
    int terminations = 0;
    AppDelegate delegate;
};

/// As far as a program gets before any time has passed.
inline void launch(Program &program)
{
    program.delegate.applicationDidFinishLaunching();
    program.platform.clock.advance(std::chrono::milliseconds(0));
}

[[nodiscard]] inline RunPlan plan(RunMode mode)
{
    RunPlan result;
    result.mode = mode;
    return result;
}

} // namespace moorline::test
