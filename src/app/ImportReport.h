#pragma once

#include "settings/Settings.h"

#include <QStringList>

namespace moorline {

/// What an import from the desktop's dock brought.
struct ImportResult {
    QList<AppShortcut> added;
    /// The labels of what could not be found, in the dock's order.
    QStringList unresolved;
};

/// The report of the import mode, a line each.
[[nodiscard]] QStringList importReport(const ImportResult &result, qsizetype pinnedApps);

} // namespace moorline
