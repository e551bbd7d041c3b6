#include "freedesktop/WindowMatcher.h"

#include "freedesktop/ExecWords.h"

#include <algorithm>
#include <array>
#include <utility>

namespace moorline {

namespace {

constexpr QLatin1StringView entrySuffix(".desktop");

bool isShown(const EntryRecord &record)
{
    return !record.noDisplay && !record.hidden;
}

/// How a name may be written as the name of an entry.
QStringList namesOfEntry(const QString &name)
{
    const QString dashed = QString(name).replace(u' ', u'-');
    QStringList plain{name, name.toLower(), dashed, dashed.toLower()};
    plain.removeDuplicates();
    QStringList all = plain;
    for (const char *prefix : {"org.gnome.", "org.kde.", "org.freedesktop."}) {
        for (const QString &one : std::as_const(plain))
            all.append(QLatin1StringView(prefix) + one);
    }
    return all;
}

QString withoutSuffix(QString fileName)
{
    if (fileName.endsWith(entrySuffix))
        fileName.chop(entrySuffix.size());
    return fileName;
}

/// What the process runs: its own program, or its script where that is an interpreter.
std::optional<ProgramName> programRunBy(const ProcessFacts &process)
{
    QStringList command = process.command;
    if (command.isEmpty())
        command.append(process.executable);
    else if (!process.executable.isEmpty())
        command.first() = process.executable;
    if (!isInterpreter(command.first()))
        return ProgramName{.name = command.first(), .arguments = command.mid(1)};
    return programOf(command);
}

/// Whether an entry that runs `claimed` means the program of a process, which was called as `called`.
bool means(const QString &claimed, const QString &program, const QString &called)
{
    if (claimed.startsWith(u'/'))
        return claimed == program || claimed == called;
    return claimed == baseName(program) || claimed == baseName(called);
}

/// Whether all of `wanted` are there, in their order.
bool containsInOrder(const QStringList &arguments, const QStringList &wanted)
{
    auto next = wanted.cbegin();
    for (const QString &argument : arguments) {
        if (next != wanted.cend() && argument == *next)
            ++next;
    }
    return next == wanted.cend();
}

} // namespace

WindowMatcher::WindowMatcher(const QList<EntryRecord> &records)
    : m_records(records)
{
    for (qsizetype index = 0; index < m_records.size(); ++index)
        take(index);
}

void WindowMatcher::take(qsizetype index)
{
    const EntryRecord &record = m_records[index];
    const std::optional<ProgramName> program = programOf(execWords(record.exec));
    m_programs.append(program);
    if (!m_byId.contains(record.id))
        m_byId.insert(record.id, index);
    m_byLowerId[record.id.toLower()].append(index);
    m_byPath[record.path].append(index);
    if (!record.startupWmClass.isEmpty())
        m_byStartupClass[record.startupWmClass.toLower()].append(index);
    if (!record.flatpakId.isEmpty())
        m_byFlatpak[record.flatpakId].append(index);
    if (!record.snapName.isEmpty())
        m_bySnap[record.snapName].append(index);
    if (!program || record.terminal)
        return;
    switch (program->kind) {
    case ProgramName::Kind::file:
        m_byFileName[baseName(program->name)].append(index);
        break;
    case ProgramName::Kind::busName:
        m_byBusName[program->name].append(index);
        break;
    case ProgramName::Kind::flatpak:
        if (record.flatpakId.isEmpty())
            m_byFlatpak[program->name].append(index);
        break;
    case ProgramName::Kind::snap:
        if (record.snapName.isEmpty())
            m_bySnap[program->name].append(index);
        break;
    }
}

std::optional<QString> WindowMatcher::match(const WindowFacts &window, const ProcessFacts *process) const
{
    if (process) {
        const Indices sandboxed = inSandbox(*process);
        if (!sandboxed.isEmpty())
            return matchWithin(sandboxed, window, *process);
    }
    const auto index = find(window, process);
    return index ? std::optional(m_records[*index].id) : std::nullopt;
}

/// A sandbox stands above all that a window says, whichever of the sandboxed applications it is.
bool WindowMatcher::isDecidedWithoutProcess(const WindowFacts &window) const
{
    return !window.process || (m_byFlatpak.isEmpty() && m_bySnap.isEmpty() && byWindow(window));
}

std::optional<QString> WindowMatcher::matchWithin(
    const Indices &sandboxed, const WindowFacts &window, const ProcessFacts &process) const
{
    QList<EntryRecord> records;
    for (const qsizetype index : sandboxed)
        records.append(m_records[index]);
    if (const auto found = WindowMatcher(records).find(window, &process))
        return records[*found].id;
    const auto index = preferred(sandboxed, process.flatpakId.isEmpty() ? process.snapName : process.flatpakId);
    return m_records[*index].id;
}

std::optional<qsizetype> WindowMatcher::find(const WindowFacts &window, const ProcessFacts *process) const
{
    if (const auto index = byWindow(window))
        return index;
    return process ? byProcess(*process) : std::nullopt;
}

std::optional<qsizetype> WindowMatcher::byWindow(const WindowFacts &window) const
{
    if (const auto index = byApplicationId(window.applicationId))
        return index;
    QStringList names{window.instanceName, window.className};
    names.removeIf([](const QString &name) { return name.isEmpty() || isInterpreter(name); });
    // Two programs may differ in nothing but the case of their class.
    for (const Qt::CaseSensitivity sensitivity : {Qt::CaseSensitive, Qt::CaseInsensitive}) {
        for (const QString &name : std::as_const(names)) {
            if (const auto index = byStartupClass(name, sensitivity))
                return index;
        }
    }
    for (const QString &name : std::as_const(names)) {
        if (const auto index = byName(name))
            return index;
    }
    return std::nullopt;
}

std::optional<qsizetype> WindowMatcher::byApplicationId(const QString &id) const
{
    if (id.isEmpty())
        return std::nullopt;
    if (const auto found = m_byId.constFind(id); found != m_byId.constEnd())
        return *found;
    if (const auto index = preferred(m_byLowerId.value(id.toLower()), id))
        return index;
    return preferred(m_byBusName.value(id), id);
}

std::optional<qsizetype> WindowMatcher::byStartupClass(const QString &name, Qt::CaseSensitivity sensitivity) const
{
    Indices same = m_byStartupClass.value(name.toLower());
    same.removeIf([&](qsizetype index) { return m_records[index].startupWmClass.compare(name, sensitivity) != 0; });
    return preferred(same, name);
}

std::optional<qsizetype> WindowMatcher::byName(const QString &name) const
{
    const QStringList ids = namesOfEntry(name);
    for (const QString &id : ids) {
        if (const auto found = m_byId.constFind(id); found != m_byId.constEnd())
            return *found;
    }
    return std::nullopt;
}

std::optional<qsizetype> WindowMatcher::byProcess(const ProcessFacts &process) const
{
    if (const auto index = byPath(process.hintedEntry))
        return index;
    if (const auto index = byProgram(process))
        return index;
    return byLaunch(process);
}

/// The entry of that name where there is none at that path: the user's own stands before the system's. What runs in a
/// terminal has the terminal's window.
std::optional<qsizetype> WindowMatcher::byPath(const QString &path) const
{
    if (path.isEmpty())
        return std::nullopt;
    const auto indices = m_byPath.constFind(path);
    const QString id = withoutSuffix(baseName(path));
    const qsizetype index = indices == m_byPath.constEnd() ? m_byId.value(id, -1) : indices->first();
    return index < 0 || m_records[index].terminal ? std::nullopt : std::optional(index);
}

std::optional<qsizetype> WindowMatcher::byProgram(const ProcessFacts &process) const
{
    const std::optional<ProgramName> program = programRunBy(process);
    if (!program || program->kind != ProgramName::Kind::file || program->name.isEmpty())
        return std::nullopt;
    QString called = process.command.value(0);
    if (isInterpreter(called) || isInterpreter(process.executable))
        called = program->name;
    Indices candidates = m_byFileName.value(baseName(program->name));
    if (baseName(called) != baseName(program->name))
        candidates += m_byFileName.value(baseName(called));
    candidates.removeIf([&](qsizetype index) { return !means(m_programs[index]->name, program->name, called); });
    return best(candidates, program->arguments);
}

/// Among entries that run the same program, the one whose own arguments the process was given.
std::optional<qsizetype> WindowMatcher::best(const Indices &indices, const QStringList &arguments) const
{
    if (indices.size() == 1)
        return indices.first();
    Indices fitting;
    qsizetype most = 0;
    for (const qsizetype index : indices) {
        const QStringList &wanted = m_programs[index]->arguments;
        if (wanted.size() < most || !containsInOrder(arguments, wanted))
            continue;
        if (wanted.size() > most)
            fitting.clear();
        most = wanted.size();
        fitting.append(index);
    }
    return preferred(fitting, QString());
}

/// Children inherit the mark, so it has to be the process that was started, or what the shell script that was started
/// has started in turn.
std::optional<qsizetype> WindowMatcher::byLaunch(const ProcessFacts &process) const
{
    const bool isOwn = process.launchedProcess == process.process;
    const bool isParents = process.parent && process.launchedProcess == process.parent
        && !process.parentCommand.isEmpty() && isShell(process.parentCommand.first());
    return isOwn || isParents ? byPath(process.launchedEntry) : std::nullopt;
}

WindowMatcher::Indices WindowMatcher::inSandbox(const ProcessFacts &process) const
{
    if (!process.flatpakId.isEmpty())
        return m_byFlatpak.value(process.flatpakId);
    return process.snapName.isEmpty() ? Indices() : m_bySnap.value(process.snapName);
}

std::optional<qsizetype> WindowMatcher::preferred(const Indices &indices, const QString &name) const
{
    if (indices.isEmpty())
        return std::nullopt;
    const auto rank = [&](qsizetype index) {
        const EntryRecord &record = m_records[index];
        if (record.id.compare(name, Qt::CaseInsensitive) == 0)
            return 0;
        return isShown(record) ? 1 : 2;
    };
    return *std::min_element(
        indices.begin(), indices.end(), [&](qsizetype one, qsizetype other) { return rank(one) < rank(other); });
}

} // namespace moorline
