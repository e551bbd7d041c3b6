#pragma once

#include "platform/Clock.h"

#include <QCoroTask>
#include <QString>
#include <optional>

namespace moorline {

/// Runs AppleScript in a process of its own, so that an application that hangs can never block the bar.
/// Runs are independent and may overlap.
class AppleScriptRunner {
public:
    /// `clock` outlives every run, also one that goes on without its runner. `program` is the script host; another one
    /// stands in for it where there is no AppleScript.
    explicit AppleScriptRunner(Clock &clock, QString program = QStringLiteral("/usr/bin/osascript"));

    /// The trimmed output of the script; absent when it failed in whatever way. The timeout starts when the script has
    /// closed its output, so it bounds only the wait for the end of the process.
    [[nodiscard]] QCoro::Task<std::optional<QString>> run(QString script, std::chrono::milliseconds timeout) const;
    /// Runs a script whose result is of no interest.
    void runDetached(QString script) const;

private:
    Clock &m_clock;
    QString m_program;
};

} // namespace moorline
