#include "system/ScriptProcess.h"

#include <unistd.h>

namespace moorline {

namespace {

/// No script that anyone waits for writes nearly as much.
constexpr qsizetype largestOutput = qsizetype(1024) * 1024;
/// How long a program may take over its own ending before it is killed.
constexpr std::chrono::seconds gracePeriod{2};

} // namespace

ScriptProcess::ScriptProcess(Clock &clock, std::chrono::milliseconds timeout)
    : m_clock(clock)
    , m_timeout(timeout)
{
    connect(&m_output, &OutputPipe::received, this, &ScriptProcess::collect);
    connect(&m_output, &OutputPipe::closed, this, &ScriptProcess::outputEnded);
    connect(&m_errors, &OutputPipe::closed, this, &ScriptProcess::outputEnded);
    connect(&m_process, &QProcess::finished, this, &ScriptProcess::finish);
    connect(&m_process, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            finish();
    });
}

ScriptProcess *ScriptProcess::start(
    Clock &clock, const QString &program, const QStringList &arguments, std::chrono::milliseconds timeout)
{
    auto *process = new ScriptProcess(clock, timeout);
    process->launch(program, arguments);
    return process;
}

void ScriptProcess::launch(const QString &program, const QStringList &arguments)
{
    if (!m_output.open() || !m_errors.open()) {
        settle(std::nullopt);
        deleteLater();
        return;
    }
    m_process.setStandardInputFile(QProcess::nullDevice());
    m_process.setStandardOutputFile(QProcess::nullDevice());
    m_process.setStandardErrorFile(QProcess::nullDevice());
    m_process.setChildProcessModifier([output = m_output.childEnd(), errors = m_errors.childEnd()] {
        ::dup2(output, STDOUT_FILENO);
        ::dup2(errors, STDERR_FILENO);
    });
    m_process.start(program, arguments);
    m_output.closeChildEnd();
    m_errors.closeChildEnd();
}

void ScriptProcess::collect(const QByteArray &bytes)
{
    m_collected += bytes;
    if (m_collected.size() <= largestOutput)
        return;
    m_isOverflowing = true;
    m_collected.clear();
    m_output.close();
}

void ScriptProcess::outputEnded()
{
    if (hasOpenOutput())
        return;
    if (m_process.state() == QProcess::NotRunning)
        finish();
    else
        m_deadline = m_clock.after(m_timeout, [this] { terminate(); });
}

void ScriptProcess::finish()
{
    // What the program left running may still be writing.
    if (hasOpenOutput())
        return;
    m_deadline.reset();
    settle(hasSucceeded() ? std::optional(m_collected) : std::nullopt);
    deleteLater();
}

void ScriptProcess::terminate()
{
    settle(std::nullopt);
    m_process.terminate();
    m_deadline = m_clock.after(gracePeriod, [this] { m_process.kill(); });
}

void ScriptProcess::settle(std::optional<QByteArray> answer)
{
    if (std::exchange(m_isSettled, true))
        return;
    m_answer = std::move(answer);
    Q_EMIT settled();
}

bool ScriptProcess::hasSucceeded() const
{
    return !m_isOverflowing && m_process.error() != QProcess::FailedToStart
        && m_process.exitStatus() == QProcess::NormalExit && m_process.exitCode() == 0;
}

} // namespace moorline
