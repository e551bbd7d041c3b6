#include "freedesktop/QuitPlan.h"

#include "freedesktop/LaunchRules.h"

#include <algorithm>

namespace moorline {

std::optional<QString> quitActionOf(const QList<EntryAction> &actions)
{
    const auto quit = std::find_if(actions.begin(), actions.end(), [](const EntryAction &action) {
        return action.id.compare(QLatin1StringView("quit"), Qt::CaseInsensitive) == 0;
    });
    return quit == actions.end() ? std::nullopt : std::optional(quit->id);
}

QuitPlan planQuit(const QList<EntryAction> &actions, bool exportsQuit, const QList<XWindowId> &taskbarWindows,
    const QList<XWindowId> &closable)
{
    if (const auto action = quitActionOf(actions))
        return QuitByEntryAction{*action};
    if (exportsQuit)
        return QuitByExportedAction{};
    QuitByClosing closing;
    for (const XWindowId window : taskbarWindows) {
        if (closable.contains(window))
            closing.windows.append(window);
    }
    return closing;
}

bool canBeAskedToQuit(const QList<EntryAction> &actions, const QList<QuitOffer> &windows)
{
    return quitActionOf(actions) || std::any_of(windows.begin(), windows.end(), [](const QuitOffer &offer) {
        return offer.isClosable || offer.hasActions;
    });
}

bool isQuitUnheard(const QString &errorName)
{
    const QStringList silences{QStringLiteral("org.freedesktop.DBus.Error.NoReply"),
        QStringLiteral("org.freedesktop.DBus.Error.Timeout"), QStringLiteral("org.freedesktop.DBus.Error.TimedOut")};
    return isNobodyThere(errorName) || silences.contains(errorName);
}

} // namespace moorline
