#pragma once

#include "freedesktop/EntryRecord.h"
#include "freedesktop/ProgramName.h"
#include "freedesktop/WindowFacts.h"

#include <QHash>
#include <QList>

namespace moorline {

/// Says which desktop entry a window belongs to, by what the window says of itself and, where that is not enough, by
/// its process.
class WindowMatcher final {
public:
    /// Knows of no entry.
    WindowMatcher() = default;
    /// Of `records` with the same claim the one that is shown counts, then the first.
    explicit WindowMatcher(const QList<EntryRecord> &records);

    /// The id of the entry; absent where the window belongs to none. `process` is null where nothing is known of it.
    [[nodiscard]] std::optional<QString> match(const WindowFacts &window, const ProcessFacts *process) const;
    /// Whether nothing that could be learnt of its process would change whose the window is.
    [[nodiscard]] bool isDecidedWithoutProcess(const WindowFacts &window) const;

private:
    using Indices = QList<qsizetype>;
    using Index = QHash<QString, Indices>;

    void take(qsizetype index);
    [[nodiscard]] std::optional<qsizetype> find(const WindowFacts &window, const ProcessFacts *process) const;
    [[nodiscard]] std::optional<qsizetype> byWindow(const WindowFacts &window) const;
    [[nodiscard]] std::optional<qsizetype> byApplicationId(const QString &id) const;
    [[nodiscard]] std::optional<qsizetype> byStartupClass(const QString &name, Qt::CaseSensitivity sensitivity) const;
    [[nodiscard]] std::optional<qsizetype> byName(const QString &name) const;
    [[nodiscard]] std::optional<qsizetype> byProcess(const ProcessFacts &process) const;
    [[nodiscard]] std::optional<qsizetype> byPath(const QString &path) const;
    [[nodiscard]] std::optional<qsizetype> byProgram(const ProcessFacts &process) const;
    [[nodiscard]] std::optional<qsizetype> byLaunch(const ProcessFacts &process) const;
    [[nodiscard]] Indices inSandbox(const ProcessFacts &process) const;
    [[nodiscard]] std::optional<QString> matchWithin(
        const Indices &sandboxed, const WindowFacts &window, const ProcessFacts &process) const;
    [[nodiscard]] std::optional<qsizetype> preferred(const Indices &indices, const QString &name) const;
    [[nodiscard]] std::optional<qsizetype> best(const Indices &indices, const QStringList &arguments) const;

    QList<EntryRecord> m_records;
    /// What each entry runs.
    QList<std::optional<ProgramName>> m_programs;
    QHash<QString, qsizetype> m_byId;
    Index m_byLowerId;
    Index m_byStartupClass;
    Index m_byPath;
    Index m_byFileName;
    Index m_byBusName;
    Index m_byFlatpak;
    Index m_bySnap;
};

} // namespace moorline
