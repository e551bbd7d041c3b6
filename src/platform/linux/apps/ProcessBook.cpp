#include "platform/linux/apps/ProcessBook.h"

#include "platform/linux/apps/ProcessReader.h"

namespace moorline {

const ProcessFacts *ProcessBook::find(qint64 process)
{
    if (const auto known = m_facts.constFind(process); known != m_facts.constEnd())
        return &*known;
    if (!m_awaited.contains(process))
        read(process);
    return nullptr;
}

void ProcessBook::keepOnly(const QSet<qint64> &processes)
{
    m_facts.removeIf([&](const auto &known) { return !processes.contains(known.key()); });
    m_awaited &= processes;
}

void ProcessBook::noteLaunch(qint64 process, const QString &path)
{
    m_launches.prepend({process, path});
    if (m_launches.size() > maximumLaunches)
        m_launches.removeLast();
}

void ProcessBook::noteEnd(qint64 process)
{
    m_launches.removeIf([&](const Launch &launch) { return launch.process == process; });
}

/// What is started here carries no mark of its own number.
void ProcessBook::takeLaunch(ProcessFacts &facts) const
{
    for (const Launch &launch : m_launches) {
        if (launch.process == facts.process || launch.process == facts.parent) {
            facts.launchedEntry = launch.path;
            facts.launchedProcess = launch.process;
            return;
        }
    }
}

void ProcessBook::read(qint64 process)
{
    m_awaited.insert(process);
    const std::function<ProcessFacts()> work = [process] { return readProcess(process); };
    m_background.run<ProcessFacts>(work, [this](const ProcessFacts &facts) {
        // It ended meanwhile, or another one of this number was asked for.
        if (!m_awaited.remove(facts.process))
            return;
        ProcessFacts all = facts;
        takeLaunch(all);
        m_facts.insert(all.process, all);
        Q_EMIT processRead(facts.process);
    });
}

} // namespace moorline
