#include "app/ImportReport.h"

namespace moorline {

QStringList importReport(const DockImporter::Result &result, qsizetype pinnedApps)
{
    QStringList lines;
    for (const AppShortcut &shortcut : result.added)
        lines.append(QStringLiteral("imported: %1 — %2").arg(shortcut.name, shortcut.path));
    for (const QString &label : result.unresolved)
        lines.append(QStringLiteral("skipped (not found): ") + label);
    lines.append(QStringLiteral("total pinned apps now: %1").arg(pinnedApps));
    return lines;
}

} // namespace moorline
