#include "freedesktop/MprisOpening.h"

#include <algorithm>

namespace moorline {

namespace {

template <typename Rule>
std::optional<qsizetype> find(const QList<WindowedApplication> &applications, const Rule &rule)
{
    const auto found = std::find_if(applications.begin(), applications.end(),
        [&rule](const WindowedApplication &one) { return !one.isTerminated && rule(one); });
    return found == applications.end() ? std::nullopt : std::optional(found - applications.begin());
}

std::optional<qsizetype> windowsOf(const MprisOrigin &player, const QList<WindowedApplication> &applications)
{
    const auto isOfEntry = [&player](const WindowedApplication &one) {
        return player.entryPath && one.entryPath == player.entryPath;
    };
    const auto isOfProcess = [&player](const WindowedApplication &one) {
        return player.process && one.process == player.process;
    };
    const auto isBoth = [&](const WindowedApplication &one) { return isOfEntry(one) && isOfProcess(one); };
    if (const auto exact = find(applications, isBoth))
        return exact;
    const auto entry = find(applications, isOfEntry);
    return entry ? entry : find(applications, isOfProcess);
}

} // namespace

std::optional<MprisOpening> mprisOpening(const MprisOrigin &player, const QList<WindowedApplication> &applications)
{
    if (const auto application = windowsOf(player, applications))
        return OpenByActivation{*application};
    if (player.canRaise)
        return OpenByRaise{};
    return player.entryPath ? std::optional<MprisOpening>(OpenByLaunch{*player.entryPath}) : std::nullopt;
}

QStringList mprisEntryIds(const QString &told)
{
    constexpr QLatin1StringView suffix(".desktop");
    QStringList ids{told};
    // Some name the whole file.
    if (told.endsWith(suffix))
        ids.append(told.chopped(suffix.size()));
    ids.removeAll(QString());
    return ids;
}

} // namespace moorline
