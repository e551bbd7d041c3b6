#pragma once

#include "freedesktop/EntryCatalogue.h"
#include "freedesktop/LauncherEntryState.h"

#include <QList>

namespace moorline {

/// What applications of the session say of themselves to whoever shows their icons. Each tells only what has changed,
/// and what it told counts until it leaves the bus.
class LauncherEntries final {
public:
    /// Of more applications than these, those that were silent for longest are forgotten.
    static constexpr qsizetype maximumStates = 256;
    /// What one sender tells of more applications than these makes it forget its own, and nobody else's.
    static constexpr qsizetype maximumStatesOfOne = 32;

    struct Badge {
        /// Of the desktop entry.
        QString path;
        QString label;

        bool operator==(const Badge &) const = default;
    };

    /// `sender` is the unique name of the connection, `address` what it calls itself: "application://name.desktop".
    /// False where that is none.
    bool update(const QString &sender, const QString &address, const QVariantMap &changes);
    /// What others had told before of the same applications counts again.
    void removeSender(const QString &sender);
    void clear() { m_states.clear(); }

    /// Whose leaving has to be told.
    [[nodiscard]] QStringList senders() const;
    /// The latest that each application told, where it shows, in the order in which they were told.
    [[nodiscard]] QList<Badge> badges(const EntryCatalogue &catalogue) const;

private:
    struct Told {
        QString sender;
        QString name;
        LauncherEntryState state;
    };

    void forgetBeyondMeasure(const QString &sender);

    /// The latest last.
    QList<Told> m_states;
};

/// The entry that an application calls `name`: the one whose file is called exactly so, else with ".desktop" added,
/// else either ignoring case. Nothing is taken off it: there are names that end in ".desktop" before the suffix.
[[nodiscard]] const EntryRecord *entryCalled(const QString &name, const EntryCatalogue &catalogue);

} // namespace moorline
