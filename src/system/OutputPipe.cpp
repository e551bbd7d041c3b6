#include "system/OutputPipe.h"

#include <array>
#include <cerrno>
#include <fcntl.h>

namespace moorline {

namespace {

constexpr int firstAfterStandardStreams = 3;
constexpr qsizetype chunkSize = qsizetype(64) * 1024;

/// A copy that no child inherits, and that is not in the way when a child gets its standard streams.
FileDescriptor privateCopy(const FileDescriptor &original)
{
    return FileDescriptor(::fcntl(original.get(), F_DUPFD_CLOEXEC, firstAfterStandardStreams));
}

bool makeNonBlocking(const FileDescriptor &file)
{
    const int flags = ::fcntl(file.get(), F_GETFL);
    return flags >= 0 && ::fcntl(file.get(), F_SETFL, flags | O_NONBLOCK) == 0;
}

} // namespace

bool OutputPipe::open()
{
    std::array<int, 2> ends{};
    if (::pipe(ends.data()) != 0)
        return false;
    const FileDescriptor readEnd(ends[0]);
    const FileDescriptor childEnd(ends[1]);
    m_readEnd = privateCopy(readEnd);
    m_childEnd = privateCopy(childEnd);
    if (!m_readEnd.isOpen() || !m_childEnd.isOpen() || !makeNonBlocking(m_readEnd))
        return false;
    m_notifier = std::make_unique<QSocketNotifier>(m_readEnd.get(), QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &OutputPipe::read);
    return true;
}

void OutputPipe::close()
{
    if (!isOpen())
        return;
    // May be running inside the notifier's own signal.
    m_notifier->setEnabled(false);
    m_notifier.release()->deleteLater();
    m_readEnd.close();
    Q_EMIT closed();
}

void OutputPipe::read()
{
    QByteArray bytes(chunkSize, Qt::Uninitialized);
    const auto count = ::read(m_readEnd.get(), bytes.data(), size_t(bytes.size()));
    if (count < 0 && (errno == EAGAIN || errno == EINTR))
        return;
    if (count <= 0) {
        close();
        return;
    }
    bytes.truncate(count);
    Q_EMIT received(bytes);
}

} // namespace moorline
