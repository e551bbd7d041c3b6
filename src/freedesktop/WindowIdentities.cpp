#include "freedesktop/WindowIdentities.h"

#include "freedesktop/TaskbarRule.h"

#include <utility>

namespace moorline {

void WindowIdentities::setMatcher(std::shared_ptr<const WindowMatcher> matcher)
{
    m_matcher = std::move(matcher);
    m_known.clear();
}

void WindowIdentities::forget(qint64 process)
{
    m_known.removeIf([&](const auto &known) { return known->process == process; });
}

QHash<XWindowId, QString> WindowIdentities::identify(const QList<WindowFacts> &windows, const ProcessLookup &processes)
{
    QHash<XWindowId, Identity> before = std::exchange(m_known, {});
    m_known.reserve(windows.size());
    QHash<XWindowId, QString> entries;
    entries.reserve(windows.size());
    for (const WindowFacts &window : windows) {
        const auto known = before.constFind(window.window);
        const bool isSame = known != before.constEnd() && known->instanceName == window.instanceName
            && known->className == window.className && known->applicationId == window.applicationId
            && known->process == window.process;
        const Identity identity = isSame ? *known : matched(window, processes);
        m_known.insert(window.window, identity);
        if (identity.entry)
            entries.insert(window.window, *identity.entry);
    }
    const QHash<XWindowId, XWindowId> transientFor = transienceAmong(windows);
    for (auto dialog = transientFor.cbegin(); dialog != transientFor.cend(); ++dialog) {
        if (entries.contains(dialog.key()))
            continue;
        const QList<XWindowId> owners = ownersOf(dialog.key(), transientFor);
        for (const XWindowId owner : owners) {
            if (const auto &known = m_known.value(owner).entry) {
                entries.insert(dialog.key(), *known);
                break;
            }
        }
    }
    return entries;
}

WindowIdentities::Identity WindowIdentities::matched(const WindowFacts &window, const ProcessLookup &processes) const
{
    const ProcessFacts *process = window.process ? processes(*window.process) : nullptr;
    return {.instanceName = window.instanceName,
        .className = window.className,
        .applicationId = window.applicationId,
        .process = window.process,
        .entry = m_matcher->match(window, process),
        .isDecided = process || m_matcher->isDecidedWithoutProcess(window)};
}

QSet<XWindowId> WindowIdentities::undecided() const
{
    QSet<XWindowId> windows;
    for (auto known = m_known.cbegin(); known != m_known.cend(); ++known) {
        if (!known->isDecided)
            windows.insert(known.key());
    }
    return windows;
}

} // namespace moorline
