#include "system/AppleScriptRunner.h"

#include "system/ScriptProcess.h"

#include <coroutine>

namespace moorline {

namespace {

constexpr std::chrono::seconds detachedTimeout{10};

QStringList arguments(const QString &script)
{
    return {QStringLiteral("-e"), script};
}

/// Suspends until a run has settled, and goes on at that very moment.
class Settling {
public:
    explicit Settling(ScriptProcess &process)
        : m_process(process)
    {
    }

    [[nodiscard]] bool await_ready() const { return m_process.isSettled(); }

    void await_suspend(std::coroutine_handle<> waiting)
    {
        QObject::connect(&m_process, &ScriptProcess::settled, &m_process, [waiting] { waiting.resume(); });
    }

    [[nodiscard]] std::optional<QByteArray> await_resume() const { return m_process.answer(); }

private:
    ScriptProcess &m_process;
};

std::optional<QString> trimmedText(const QByteArray &output)
{
    if (!output.isValidUtf8())
        return std::nullopt;
    return QString::fromUtf8(output).trimmed();
}

} // namespace

AppleScriptRunner::AppleScriptRunner(Clock &clock, QString program)
    : m_clock(clock)
    , m_program(std::move(program))
{
}

QCoro::Task<std::optional<QString>> AppleScriptRunner::run(QString script, std::chrono::milliseconds timeout) const
{
    auto *process = ScriptProcess::start(m_clock, m_program, arguments(script), timeout);
    const auto answer = co_await Settling(*process);
    co_return answer ? trimmedText(*answer) : std::nullopt;
}

void AppleScriptRunner::runDetached(QString script) const
{
    static_cast<void>(ScriptProcess::start(m_clock, m_program, arguments(script), detachedTimeout));
}

} // namespace moorline
