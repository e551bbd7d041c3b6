#pragma once

#include "apps/DockImporter.h"

#include <QStringList>

namespace moorline {

/// The report of the import mode, a line each.
[[nodiscard]] QStringList importReport(const DockImporter::Result &result, qsizetype pinnedApps);

} // namespace moorline
