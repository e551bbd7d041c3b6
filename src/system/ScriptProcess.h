#pragma once

#include "platform/Clock.h"
#include "system/OutputPipe.h"

#include <QProcess>
#include <optional>

namespace moorline {

/// One run of a program whose output is wanted. Lives until the program has ended, which may be after it settled, and
/// then deletes itself.
class ScriptProcess final : public QObject {
    Q_OBJECT
public:
    /// Never null; may have settled already. The timeout starts when the program has closed its output and its errors.
    [[nodiscard]] static ScriptProcess *start(
        Clock &clock, const QString &program, const QStringList &arguments, std::chrono::milliseconds timeout);

    [[nodiscard]] bool isSettled() const { return m_isSettled; }
    /// What the program wrote; absent when it could not be started, failed, crashed, wrote beyond all measure, or was
    /// still running after the timeout and had to be terminated.
    [[nodiscard]] const std::optional<QByteArray> &answer() const { return m_answer; }

Q_SIGNALS:
    void settled();

private:
    ScriptProcess(Clock &clock, std::chrono::milliseconds timeout);

    void launch(const QString &program, const QStringList &arguments);
    void collect(const QByteArray &bytes);
    void outputEnded();
    void finish();
    void terminate();
    void settle(std::optional<QByteArray> answer);

    [[nodiscard]] bool hasOpenOutput() const { return m_output.isOpen() || m_errors.isOpen(); }
    [[nodiscard]] bool hasSucceeded() const;

    Clock &m_clock;
    std::chrono::milliseconds m_timeout;
    QProcess m_process;
    OutputPipe m_output;
    /// Read and thrown away, so that a program that complains a lot does not stall on a full pipe.
    OutputPipe m_errors;
    QByteArray m_collected;
    bool m_isOverflowing = false;
    bool m_isSettled = false;
    std::optional<QByteArray> m_answer;
    std::unique_ptr<Clock::Timer> m_deadline;
};

} // namespace moorline
