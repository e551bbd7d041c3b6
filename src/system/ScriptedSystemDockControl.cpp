#include "system/ScriptedSystemDockControl.h"

#include "support/DecimalText.h"
#include "system/AppleScriptRunner.h"

#include <QProcess>
#include <QScopedPointer>
#include <coroutine>
#include <memory>

namespace moorline {

namespace {

constexpr std::chrono::seconds scriptTimeout{6};
const QString enableAutoHideScript = QStringLiteral("tell application \"System Events\"\n"
                                                    "    tell dock preferences to set autohide to true\n"
                                                    "end tell");

QStringList delayArguments(double seconds)
{
    return {QStringLiteral("write"), QStringLiteral("com.apple.dock"), QStringLiteral("autohide-delay"),
        QStringLiteral("-float"), decimalText(seconds)};
}

enum class Ending { notStarted, failed, succeeded };

/// Suspends until a program has ended, or could not be started.
class ProgramEnd {
public:
    explicit ProgramEnd(QProcess &process)
        : m_process(process)
    {
    }

    [[nodiscard]] bool await_ready() const { return m_process.state() == QProcess::NotRunning; }

    void await_suspend(std::coroutine_handle<> waiting)
    {
        QObject::connect(&m_process, &QProcess::finished, &m_process, [waiting] { waiting.resume(); });
        QObject::connect(&m_process, &QProcess::errorOccurred, &m_process, [waiting](QProcess::ProcessError error) {
            if (error == QProcess::FailedToStart)
                waiting.resume();
        });
    }

    [[nodiscard]] Ending await_resume() const
    {
        if (m_process.error() == QProcess::FailedToStart)
            return Ending::notStarted;
        const bool succeeded = m_process.exitStatus() == QProcess::NormalExit && m_process.exitCode() == 0;
        return succeeded ? Ending::succeeded : Ending::failed;
    }

private:
    QProcess &m_process;
};

QCoro::Task<Ending> run(QString program, QStringList arguments)
{
    // This goes on from within a signal of the process, which must outlive that.
    const std::unique_ptr<QProcess, QScopedPointerDeleteLater> process(new QProcess);
    process->setProcessChannelMode(QProcess::ForwardedChannels);
    process->setStandardInputFile(QProcess::nullDevice());
    process->start(program, arguments);
    co_return co_await ProgramEnd(*process);
}

} // namespace

ScriptedSystemDockControl::ScriptedSystemDockControl(const AppleScriptRunner &scripts)
    : ScriptedSystemDockControl(scripts, Programs())
{
}

ScriptedSystemDockControl::ScriptedSystemDockControl(const AppleScriptRunner &scripts, Programs programs)
    : m_scripts(scripts)
    , m_programs(std::move(programs))
{
}

QCoro::Task<bool> ScriptedSystemDockControl::enableAutoHide()
{
    const auto answer = co_await m_scripts.run(enableAutoHideScript, scriptTimeout);
    co_return answer.has_value();
}

QCoro::Task<bool> ScriptedSystemDockControl::setRevealDelay(double seconds)
{
    const Programs programs = m_programs;
    if (co_await run(programs.defaults, delayArguments(seconds)) != Ending::succeeded)
        co_return false;
    // The Dock reads the delay when it starts.
    co_return co_await run(programs.killall, QStringList(QStringLiteral("Dock"))) != Ending::notStarted;
}

} // namespace moorline
