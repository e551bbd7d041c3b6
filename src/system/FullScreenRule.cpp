#include "system/FullScreenRule.h"

#include <algorithm>

namespace moorline {

namespace {

/// Dialogs of dialogs; a ring of windows that name each other ends here, too.
constexpr int maximumTransience = 8;

bool isOrdinary(const WindowDescription &window)
{
    return window.kind == WindowKind::normal || window.kind == WindowKind::dialog || window.kind == WindowKind::utility;
}

/// A full-screen window may span several screens.
bool isOn(const QRectF &screen, const WindowDescription &window)
{
    return window.bounds && (screen.contains(window.bounds->center()) || window.bounds->contains(screen));
}

template <typename Predicate>
const WindowDescription *first(const QList<WindowDescription> &windows, Predicate predicate)
{
    const auto found = std::find_if(windows.begin(), windows.end(), predicate);
    return found == windows.end() ? nullptr : &*found;
}

const WindowDescription *holder(const QList<WindowDescription> &windows, const QRectF &screen, qint64 ownProcess)
{
    const auto mayHold = [&](const WindowDescription &window) {
        return isOrdinary(window) && window.ownerProcess != ownProcess && isOn(screen, window);
    };
    const auto isActive = [&](const WindowDescription &window) { return window.isActive && mayHold(window); };
    const WindowDescription *active = first(windows, isActive);
    return active ? active : first(windows, mayHold);
}

const WindowDescription *parentOf(const QList<WindowDescription> &windows, const WindowDescription &window)
{
    if (!window.transientFor)
        return nullptr;
    return first(windows, [&](const WindowDescription &candidate) { return candidate.id == window.transientFor; });
}

} // namespace

std::optional<bool> belongsToFullScreenWindow(
    const QList<WindowDescription> &windows, const QRectF &screen, qint64 ownProcess)
{
    const auto tells = [](const WindowDescription &window) { return window.isFullScreen.has_value(); };
    if (std::none_of(windows.begin(), windows.end(), tells))
        return std::nullopt;
    const WindowDescription *window = holder(windows, screen, ownProcess);
    for (int step = 0; window && step < maximumTransience; ++step) {
        if (window->isFullScreen == true)
            return true;
        window = parentOf(windows, *window);
    }
    return false;
}

} // namespace moorline
