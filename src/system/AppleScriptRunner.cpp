#include "system/AppleScriptRunner.h"

#include "system/ScriptProcess.h"

#include <QCoroSignal>

namespace moorline {

namespace {

constexpr std::chrono::seconds detachedTimeout{10};

QStringList arguments(const QString &script)
{
    return {QStringLiteral("-e"), script};
}

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
    if (!process->isSettled())
        co_await qCoro(process, &ScriptProcess::settled);
    const auto answer = process->answer();
    co_return answer ? trimmedText(*answer) : std::nullopt;
}

void AppleScriptRunner::runDetached(QString script) const
{
    static_cast<void>(ScriptProcess::start(m_clock, m_program, arguments(script), detachedTimeout));
}

} // namespace moorline
