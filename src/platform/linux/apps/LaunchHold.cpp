#include "platform/linux/apps/LaunchHold.h"

#include <fcntl.h>
#include <poll.h>

namespace moorline {

namespace {

bool makePipe(FileDescriptor &from, FileDescriptor &to)
{
    int ends[2] = {-1, -1};
    if (::pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0)
        return false;
    from = FileDescriptor(ends[0]);
    to = FileDescriptor(ends[1]);
    return true;
}

} // namespace

std::shared_ptr<LaunchHold> LaunchHold::create(std::chrono::milliseconds limit)
{
    std::shared_ptr<LaunchHold> hold(new LaunchHold);
    hold->m_limit = limit;
    const bool isMade = makePipe(hold->m_reports, hold->m_reporter) && makePipe(hold->m_gate, hold->m_opener);
    return isMade ? hold : nullptr;
}

void LaunchHold::wait() const
{
    char byte = 0;
    // What was meant for one before that did not wait for it.
    while (::read(m_gate.get(), &byte, 1) > 0) { }
    const pid_t self = ::getpid();
    if (::write(m_reporter.get(), &self, sizeof self) != sizeof self)
        return;
    pollfd gate{.fd = m_gate.get(), .events = POLLIN, .revents = 0};
    // A signal that comes meanwhile ends the wait as well.
    ::poll(&gate, 1, int(m_limit.count()));
}

QList<qint64> LaunchHold::takeWaiting() const
{
    QList<qint64> processes;
    pid_t process = 0;
    while (::read(m_reports.get(), &process, sizeof process) == sizeof process)
        processes.append(process);
    return processes;
}

void LaunchHold::letGo() const
{
    const char byte = 0;
    static_cast<void>(!::write(m_opener.get(), &byte, 1));
}

} // namespace moorline
