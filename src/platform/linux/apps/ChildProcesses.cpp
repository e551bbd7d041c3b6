#include "platform/linux/apps/ChildProcesses.h"

#include "support/FileDescriptor.h"

#include <algorithm>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <vector>

namespace moorline {

namespace {

/// Readable once the process ended. None where the system has no such thing.
FileDescriptor descriptorOf(qint64 process)
{
    return FileDescriptor(int(::syscall(SYS_pidfd_open, static_cast<pid_t>(process), 0U)));
}

} // namespace

struct ChildProcesses::Child {
    FileDescriptor descriptor;
    std::unique_ptr<QSocketNotifier> notifier = nullptr;
};

ChildProcesses::ChildProcesses(Clock &clock)
    : m_clock(clock)
{
}

ChildProcesses::~ChildProcesses() = default;

void ChildProcesses::watch(qint64 process)
{
    auto child = std::make_unique<Child>(Child{descriptorOf(process)});
    if (child->descriptor.isOpen()) {
        child->notifier = std::make_unique<QSocketNotifier>(child->descriptor.get(), QSocketNotifier::Read);
        connect(child->notifier.get(), &QSocketNotifier::activated, this, [this, process] { look(process); });
    } else if (!m_timer) {
        m_timer = m_clock.every(lookInterval, [this] { lookAtAll(); });
    }
    m_children.insert_or_assign(process, std::move(child));
}

void ChildProcesses::look(qint64 process)
{
    int status = 0;
    if (::waitpid(static_cast<pid_t>(process), &status, WNOHANG) == 0)
        return;
    const auto found = m_children.find(process);
    if (found == m_children.end())
        return;
    // Not under its own signal.
    if (found->second->notifier) {
        found->second->notifier->setEnabled(false);
        found->second->notifier.release()->deleteLater();
    }
    m_children.erase(found);
    Q_EMIT ended(process);
}

void ChildProcesses::lookAtAll()
{
    std::vector<qint64> unseen;
    for (const auto &[process, child] : m_children) {
        if (!child->notifier)
            unseen.push_back(process);
    }
    if (unseen.empty())
        m_timer.reset();
    std::for_each(unseen.begin(), unseen.end(), [this](qint64 process) { look(process); });
}

} // namespace moorline
