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

/// The action of the entry that is called "quit", in any case.
[[nodiscard]] std::optional<QString> quitActionOf(const QList<EntryAction> &actions);

/// `exportsQuit` says whether the application offers "app.quit" on the session bus, `taskbarWindows` are its windows on
/// all desktops, `closable` those that can be asked to close: others would be killed.
[[nodiscard]] QuitPlan planQuit(const QList<EntryAction> &actions, bool exportsQuit,
    const QList<XWindowId> &taskbarWindows, const QList<XWindowId> &closable);

} // namespace moorline
