#include "platform/linux/players/PlayerWindows.h"

#include "freedesktop/MprisOpening.h"
#include "platform/Workspace.h"
#include "platform/linux/players/MprisPlayer.h"

namespace moorline {

namespace {

std::optional<QString> entryPath(const Workspace &workspace, const QString &told)
{
    const QStringList ids = mprisEntryIds(told);
    for (const QString &id : ids) {
        if (auto path = workspace.applicationPath(id))
            return path;
    }
    return std::nullopt;
}

QList<WindowedApplication> windowed(const QList<RunningApplication> &running)
{
    QList<WindowedApplication> applications;
    for (const RunningApplication &one : running)
        applications.append({.entryPath = one.bundlePath, .process = one.process, .isTerminated = one.isTerminated});
    return applications;
}

} // namespace

void bringForward(const MprisPlayer &player, Workspace &workspace)
{
    const MprisIdentity identity = player.identity();
    const MprisOrigin origin{.entryPath = entryPath(workspace, identity.desktopEntry),
        .process = player.process(),
        .canRaise = identity.canRaise};
    const QList<RunningApplication> running = workspace.runningApplications().value_or(QList<RunningApplication>());
    const auto opening = mprisOpening(origin, windowed(running));
    if (!opening)
        return;
    if (const auto *activation = std::get_if<OpenByActivation>(&*opening))
        workspace.activate(running.at(activation->application));
    else if (const auto *launch = std::get_if<OpenByLaunch>(&*opening))
        workspace.open(launch->entryPath, {}, {});
    else
        player.raise();
}

} // namespace moorline
