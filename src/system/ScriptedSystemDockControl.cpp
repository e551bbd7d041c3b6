#include "system/ScriptedSystemDockControl.h"

#include "system/AppleScriptRunner.h"

#include <QCoroProcess>
#include <QLocale>
#include <QProcess>

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

/// The exit status; absent when the program could not be started or crashed.
QCoro::Task<std::optional<int>> run(QString program, QStringList arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    if (!co_await qCoro(process).start(program, arguments))
        co_return std::nullopt;
    co_await qCoro(process).waitForFinished(std::chrono::milliseconds(-1));
    co_return process.exitStatus() == QProcess::NormalExit ? std::optional(process.exitCode()) : std::nullopt;
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
    const auto written = co_await run(programs.defaults, delayArguments(seconds));
    if (written != 0)
        co_return false;
    // The Dock reads the delay when it starts.
    const auto restarted = co_await run(programs.killall, QStringList(QStringLiteral("Dock")));
    co_return restarted.has_value();
}

QString decimalText(double value)
{
    const QString text = QString::number(value, 'f', QLocale::FloatingPointShortest);
    return text.contains(u'.') ? text : text + QStringLiteral(".0");
}

} // namespace moorline
