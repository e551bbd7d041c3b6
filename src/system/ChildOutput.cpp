#include "system/ChildOutput.h"

#include <QProcess>
#include <QSocketNotifier>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <functional>
#include <unistd.h>

namespace moorline {

namespace {

/// A child that writes more than this is flooding; the rest is read and dropped so that it does not stall.
constexpr qsizetype mostKept = 1024 * 1024;

/// Owns a file descriptor; -1 owns none.
class FileDescriptor {
public:
    FileDescriptor() = default;
    FileDescriptor(const FileDescriptor &) = delete;
    FileDescriptor &operator=(const FileDescriptor &) = delete;
    ~FileDescriptor() { reset(); }

    void reset(int descriptor = -1)
    {
        if (m_descriptor >= 0)
            ::close(m_descriptor);
        m_descriptor = descriptor;
    }
    [[nodiscard]] int get() const { return m_descriptor; }

private:
    int m_descriptor = -1;
};

} // namespace

class ChildOutput::Pipe {
public:
    explicit Pipe(std::function<void()> closed);

    [[nodiscard]] int writeEnd() const { return m_write.get(); }
    void closeWriteEnd() { m_write.reset(); }
    [[nodiscard]] bool isClosed() const { return m_read.get() < 0; }
    [[nodiscard]] QByteArray data() const { return m_isFlooded ? QByteArray() : m_data; }

private:
    void read();
    void keep(QByteArrayView data);

    std::function<void()> m_closed;
    FileDescriptor m_read;
    FileDescriptor m_write;
    std::unique_ptr<QSocketNotifier> m_notifier;
    // Empty and not null: a child that writes nothing has an output all the same.
    QByteArray m_data = QByteArray("");
    bool m_isFlooded = false;
};

ChildOutput::Pipe::Pipe(std::function<void()> closed)
    : m_closed(std::move(closed))
{
    std::array<int, 2> ends{};
    if (::pipe(ends.data()) != 0)
        return;
    m_read.reset(ends[0]);
    m_write.reset(ends[1]);
    for (const int end : ends)
        ::fcntl(end, F_SETFD, FD_CLOEXEC);
    ::fcntl(m_read.get(), F_SETFL, O_NONBLOCK);
    m_notifier = std::make_unique<QSocketNotifier>(m_read.get(), QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] { read(); });
}

void ChildOutput::Pipe::read()
{
    std::array<char, 16384> buffer{};
    const ssize_t count = ::read(m_read.get(), buffer.data(), buffer.size());
    if (count > 0) {
        keep(QByteArrayView(buffer.data(), count));
        return;
    }
    if (count < 0 && (errno == EAGAIN || errno == EINTR))
        return;
    m_notifier->setEnabled(false);
    m_read.reset();
    m_closed();
}

void ChildOutput::Pipe::keep(QByteArrayView data)
{
    m_isFlooded = m_isFlooded || m_data.size() + data.size() > mostKept;
    if (!m_isFlooded)
        m_data.append(data);
}

ChildOutput::ChildOutput(QProcess &process)
{
    const auto pipeClosed = [this] {
        if (isClosed())
            Q_EMIT closed();
    };
    m_output = std::make_unique<Pipe>(pipeClosed);
    m_error = std::make_unique<Pipe>(pipeClosed);
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.setChildProcessModifier([output = m_output->writeEnd(), error = m_error->writeEnd()] {
        ::dup2(output, STDOUT_FILENO);
        ::dup2(error, STDERR_FILENO);
    });
}

ChildOutput::~ChildOutput() = default;

void ChildOutput::processStarted()
{
    // The child has its own copies; ours would keep the pipes open for ever.
    m_output->closeWriteEnd();
    m_error->closeWriteEnd();
}

bool ChildOutput::isClosed() const
{
    return m_output->isClosed() && m_error->isClosed();
}

QByteArray ChildOutput::standardOutput() const
{
    return m_output->data();
}

} // namespace moorline
