#pragma once

#include "support/FileDescriptor.h"

#include <QByteArray>
#include <QObject>
#include <QSocketNotifier>
#include <memory>

namespace moorline {

/// A pipe that a child process writes to. QProcess tells that a channel was closed only when the process ends; this
/// tells it at once.
class OutputPipe final : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// False when the system has no descriptor left.
    [[nodiscard]] bool open();
    /// The parent's copy of the child's end has to go before the end of the output can be seen.
    void closeChildEnd() { m_childEnd.close(); }
    /// What the child writes from now on is refused.
    void close();

    [[nodiscard]] int childEnd() const { return m_childEnd.get(); }
    [[nodiscard]] bool isOpen() const { return m_readEnd.isOpen(); }

Q_SIGNALS:
    void received(const QByteArray &bytes);
    /// Everyone who could write has closed the pipe, or close() was called.
    void closed();

private:
    void read();

    FileDescriptor m_readEnd;
    FileDescriptor m_childEnd;
    /// After the descriptor that it watches, to be gone before it.
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace moorline
