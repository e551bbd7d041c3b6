#include "freedesktop/NewWindows.h"

#include "freedesktop/TaskbarRule.h"

#include <algorithm>
#include <utility>

namespace moorline {

QList<WindowFacts> NewWindows::presentable(
    const QList<WindowFacts> &windows, const QSet<XWindowId> &undecided, std::chrono::milliseconds now)
{
    const auto keptBefore = std::exchange(m_kept, {});
    const QSet<XWindowId> toldBefore = std::exchange(m_told, {});
    for (const WindowFacts &window : windows) {
        const auto deadline = keptBefore.value(window.window, now + patience);
        if (undecided.contains(window.window) && !toldBefore.contains(window.window) && now < deadline)
            m_kept.insert(window.window, deadline);
        else
            m_told.insert(window.window);
    }
    const auto transientFor = transienceAmong(windows);
    QList<WindowFacts> told;
    std::copy_if(windows.begin(), windows.end(), std::back_inserter(told), [&](const WindowFacts &window) {
        const QList<XWindowId> owners = ownersOf(window.window, transientFor);
        return !m_kept.contains(window.window)
            && std::none_of(owners.begin(), owners.end(), [this](XWindowId owner) { return m_kept.contains(owner); });
    });
    return told;
}

std::optional<std::chrono::milliseconds> NewWindows::deadline() const
{
    const auto next = std::min_element(m_kept.begin(), m_kept.end());
    return next == m_kept.end() ? std::nullopt : std::optional(*next);
}

} // namespace moorline
