#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <optional>

namespace moorline {

/// One of the further things that an entry offers to do.
struct EntryAction {
    /// As the group is called: "new-window".
    QString id;
    /// In the user's language.
    QString name = {};

    bool operator==(const EntryAction &) const = default;
};

/// A desktop entry of type Application as it stands on disk, unjudged. A text that it does not give is empty where that
/// means the same, and absent where it does not.
struct EntryRecord {
    /// Where it was found: the folder as it is named, and the way down from there. Links are not followed to their end.
    QString path;
    /// The desktop file id without ".desktop".
    QString id;
    /// In the user's language, as the next one.
    std::optional<QString> name = std::nullopt;
    std::optional<QString> genericName = std::nullopt;
    QString exec = {};
    QString tryExec = {};
    /// Whether the program of `tryExec` is there; true where none is named.
    bool isTryExecThere = true;
    QString icon = {};
    QString startupWmClass = {};
    QStringList categories = {};
    /// Of the types it opens, those that anyone asks about.
    QStringList mimeTypes = {};
    /// As they stand, in no language.
    QStringList keywords = {};
    bool noDisplay = false;
    bool hidden = false;
    QStringList onlyShowIn = {};
    QStringList notShowIn = {};
    bool dbusActivatable = false;
    bool terminal = false;
    bool startupNotify = false;
    QList<EntryAction> actions = {};
    /// The desktop file ids, with ".desktop", that it had before.
    QStringList renamedFrom = {};
    /// The sandboxed application behind it, by the name that its windows' processes carry; empty for any other.
    QString flatpakId = {};
    QString snapName = {};
    QString workingDirectory = {};

    bool operator==(const EntryRecord &) const = default;
};

} // namespace moorline
