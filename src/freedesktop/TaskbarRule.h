#pragma once

#include "freedesktop/WindowFacts.h"

#include <QHash>
#include <QList>
#include <QSet>

namespace moorline {

/// The windows that a taskbar would show: ordinary ones that do not ask to be left out, without the dialogs of others
/// that it shows.
[[nodiscard]] QSet<XWindowId> taskbarWindows(const QList<WindowFacts> &windows);

/// The window that `window` is a dialog of, then the one which that is a dialog of, and so on, each once.
[[nodiscard]] QList<XWindowId> ownersOf(XWindowId window, const QHash<XWindowId, XWindowId> &transientFor);

/// Which window each is a dialog of.
[[nodiscard]] QHash<XWindowId, XWindowId> transienceAmong(const QList<WindowFacts> &windows);

} // namespace moorline
