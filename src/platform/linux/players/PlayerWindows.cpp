#include "platform/linux/players/PlayerWindows.h"

#include "platform/Workspace.h"
#include "platform/linux/players/MprisPlayer.h"

#include <algorithm>

namespace moorline {

namespace {

using Applications = QList<RunningApplication>;

std::optional<QString> entryPath(const Workspace &workspace, const QString &entry)
{
    constexpr QLatin1StringView suffix(".desktop");
    if (entry.isEmpty())
        return std::nullopt;
    if (auto path = workspace.applicationPath(entry))
        return path;
    // Some name the whole file.
    return entry.endsWith(suffix) ? workspace.applicationPath(entry.chopped(suffix.size())) : std::nullopt;
}

template <typename Rule>
std::optional<RunningApplication> find(const Applications &applications, const Rule &rule)
{
    const auto found = std::find_if(applications.begin(), applications.end(),
        [&rule](const RunningApplication &one) { return !one.isTerminated && rule(one); });
    return found == applications.end() ? std::nullopt : std::optional(*found);
}

/// Of several of the entry the one whose process it is.
std::optional<RunningApplication> windowsOf(
    const Applications &applications, const std::optional<QString> &path, const std::optional<qint64> &process)
{
    const auto isOfEntry = [&path](const RunningApplication &one) { return path && one.bundlePath == path; };
    const auto isOfProcess = [&process](const RunningApplication &one) { return process && one.process == process; };
    const auto isBoth = [&](const RunningApplication &one) { return isOfEntry(one) && isOfProcess(one); };
    if (auto exact = find(applications, isBoth))
        return exact;
    auto entry = find(applications, isOfEntry);
    return entry ? entry : find(applications, isOfProcess);
}

} // namespace

void bringForward(const MprisPlayer &player, Workspace &workspace)
{
    const MprisIdentity identity = player.identity();
    const auto path = entryPath(workspace, identity.desktopEntry);
    const Applications running = workspace.runningApplications().value_or(Applications());
    if (const auto windows = windowsOf(running, path, player.process()))
        workspace.activate(*windows);
    else if (identity.canRaise)
        player.raise();
    else if (path)
        workspace.open(*path, {}, {});
}

} // namespace moorline
