#pragma once

#include <QByteArray>
#include <QObject>
#include <memory>

QT_BEGIN_NAMESPACE
class QProcess;
QT_END_NAMESPACE

namespace moorline {

/// What a child process writes, and the moment at which it has closed its output. QProcess tells of the latter only
/// once the process has ended, too late for a child that closes its output and then hangs.
class ChildOutput final : public QObject {
    Q_OBJECT
public:
    /// Catches the standard output and standard error of `process`, which is about to be started.
    explicit ChildOutput(QProcess &process);
    ~ChildOutput() override;

    /// Call once the process was started, or could not be.
    void processStarted();
    [[nodiscard]] bool isClosed() const;
    /// The standard output; null when it was too much to keep.
    [[nodiscard]] QByteArray standardOutput() const;

Q_SIGNALS:
    /// Both outputs are closed and everything written to them has been read.
    void closed();

private:
    class Pipe;

    std::unique_ptr<Pipe> m_output;
    std::unique_ptr<Pipe> m_error;
};

} // namespace moorline
