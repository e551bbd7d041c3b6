#pragma once

#include "fakes/FakeClock.h"
#include "harness/TestCase.h"
#include "system/Programs.h"

namespace moorline::test {

/// The base of tests that run real programs under virtual time.
class ScriptTestCase : public TestCase {
    Q_OBJECT
protected Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_clock = std::make_unique<FakeClock>();
        m_programs = std::make_unique<Programs>();
    }

    void cleanup()
    {
        // A detached program uses the clock until it has ended.
        QTRY_VERIFY(!Programs::areRunning());
        TestCase::cleanup();
    }

protected:
    std::unique_ptr<FakeClock> m_clock;
    std::unique_ptr<Programs> m_programs;
};

} // namespace moorline::test
