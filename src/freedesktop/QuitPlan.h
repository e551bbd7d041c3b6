#pragma once

#include "freedesktop/EntryRecord.h"
#include "freedesktop/WindowFacts.h"

#include <variant>

namespace moorline {

/// How an application is asked to quit.
struct QuitByEntryAction {
    QString action;

    bool operator==(const QuitByEntryAction &) const = default;
};
struct QuitByExportedAction {
    bool operator==(const QuitByExportedAction &) const = default;
};
struct QuitByClosing {
    QList<XWindowId> windows;

    bool operator==(const QuitByClosing &) const = default;
};
using QuitPlan = std::variant<QuitByEntryAction, QuitByExportedAction, QuitByClosing>;

/// What a window offers to whoever wants its program to quit.
struct QuitOffer {
    /// It can be asked to close: others would be killed.
    bool isClosable = false;
    /// Its program has a place on the session bus where it may offer "app.quit".
    bool hasActions = false;
};

/// The action of the entry that is called "quit", in any case.
[[nodiscard]] std::optional<QString> quitActionOf(const QList<EntryAction> &actions);

/// `exportsQuit` says whether the application offers "app.quit" on the session bus, `taskbarWindows` are its windows on
/// all desktops, `closable` those that can be asked to close: others would be killed.
[[nodiscard]] QuitPlan planQuit(const QList<EntryAction> &actions, bool exportsQuit,
    const QList<XWindowId> &taskbarWindows, const QList<XWindowId> &closable);

/// Whether an application can be asked to quit in any way, by the actions of its entry and the windows that a taskbar
/// shows of it. What a program has on the bus is not asked for this.
[[nodiscard]] bool canBeAskedToQuit(const QList<EntryAction> &actions, const QList<QuitOffer> &windows);
/// Whether an answer to the request to quit leaves it to the next way: nobody was there, or nobody answered. Any other
/// is a refusal. `errorName` is D-Bus's.
[[nodiscard]] bool isQuitUnheard(const QString &errorName);

} // namespace moorline
