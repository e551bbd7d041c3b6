#include "freedesktop/LauncherEntries.h"

#include <algorithm>
#include <utility>

namespace moorline {

namespace {

constexpr QLatin1StringView scheme("application://");
constexpr QLatin1StringView suffix(".desktop");

// As long as the name of a file can be.
constexpr qsizetype longestName = 255;

bool isFileOf(const EntryRecord &record, const QString &fileName, Qt::CaseSensitivity sensitivity)
{
    return fileName.size() == record.id.size() + suffix.size() && fileName.startsWith(record.id, sensitivity)
        && fileName.endsWith(suffix, sensitivity);
}

const EntryRecord *withFile(const QString &fileName, const EntryCatalogue &catalogue)
{
    return fileName.endsWith(suffix) ? catalogue.byId(fileName.chopped(suffix.size())) : nullptr;
}

} // namespace

bool LauncherEntries::update(const QString &sender, const QString &address, const QVariantMap &changes)
{
    const QString name = address.mid(scheme.size());
    if (!address.startsWith(scheme) || name.isEmpty() || name.size() > longestName)
        return false;
    const auto known = std::find_if(
        m_states.begin(), m_states.end(), [&](const Told &one) { return one.sender == sender && one.name == name; });
    Told told{.sender = sender, .name = name, .state = {}};
    if (known != m_states.end()) {
        told = std::move(*known);
        m_states.erase(known);
    }
    told.state.merge(changes);
    m_states.append(told);
    forgetBeyondMeasure(sender);
    return true;
}

void LauncherEntries::forgetBeyondMeasure(const QString &sender)
{
    const auto isTheirs = [&](const Told &one) { return one.sender == sender; };
    if (std::count_if(m_states.cbegin(), m_states.cend(), isTheirs) > maximumStatesOfOne)
        m_states.erase(std::find_if(m_states.cbegin(), m_states.cend(), isTheirs));
    if (m_states.size() > maximumStates)
        m_states.removeFirst();
}

void LauncherEntries::removeSender(const QString &sender)
{
    m_states.removeIf([&](const Told &one) { return one.sender == sender; });
}

QStringList LauncherEntries::senders() const
{
    QStringList senders;
    for (const Told &one : m_states)
        senders.append(one.sender);
    senders.removeDuplicates();
    return senders;
}

QList<LauncherEntries::Badge> LauncherEntries::badges(const EntryCatalogue &catalogue) const
{
    QSet<QString> seen;
    QList<Badge> badges;
    for (auto told = m_states.crbegin(); told != m_states.crend(); ++told) {
        const EntryRecord *entry = entryCalled(told->name, catalogue);
        if (!entry || seen.contains(entry->path))
            continue;
        seen.insert(entry->path);
        if (const auto label = told->state.badge())
            badges.prepend({.path = entry->path, .label = *label});
    }
    return badges;
}

const EntryRecord *entryCalled(const QString &name, const EntryCatalogue &catalogue)
{
    if (const EntryRecord *entry = withFile(name, catalogue))
        return entry;
    if (const EntryRecord *entry = withFile(name + suffix, catalogue))
        return entry;
    for (const QString &fileName : {name, QString(name + suffix)}) {
        for (const EntryRecord &record : catalogue.records()) {
            if (isFileOf(record, fileName, Qt::CaseInsensitive))
                return &record;
        }
    }
    return nullptr;
}

} // namespace moorline
