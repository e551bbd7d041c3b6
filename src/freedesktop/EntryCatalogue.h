#pragma once

#include "freedesktop/EntryRecord.h"
#include "freedesktop/MimeDefaults.h"

#include <QHash>
#include <QSet>
#include <functional>

namespace moorline {

/// The file manager of the desktop, whichever it is.
inline constexpr QLatin1StringView fileManagerIdentifier("com.apple.finder");
/// The weather application of the desktop, whichever it is.
inline constexpr QLatin1StringView weatherIdentifier("com.apple.weather");

/// All that is known of the desktop entries of a session: which of several with one id counts, which are listed, and
/// who stands behind the identifiers that name a part and not a program.
class EntryCatalogue final {
public:
    /// None.
    EntryCatalogue() = default;
    /// `found` in the order of their folders, the user's own first: the first of an id counts. `desktopNames` is what
    /// XDG_CURRENT_DESKTOP says.
    EntryCatalogue(const QList<EntryRecord> &found, MimeDefaults defaults, const QStringList &desktopNames);

    /// Those that count, in the order in which they were found.
    [[nodiscard]] const QList<EntryRecord> &records() const { return m_records; }
    /// The one with this id, without ".desktop". Null where there is none, or it is hidden.
    [[nodiscard]] const EntryRecord *byId(const QString &id) const;
    /// The one found at this path. Null where another with its id counts, or it is hidden.
    [[nodiscard]] const EntryRecord *byPath(const QString &path) const;
    /// Those that are shown to whoever chooses an application in this desktop.
    [[nodiscard]] QList<EntryRecord> listed() const;

    /// The one that opens files of a type by default.
    [[nodiscard]] const EntryRecord *handler(const QString &mimeType) const;
    /// The one that opens folders by default and says of itself that it is a file manager.
    [[nodiscard]] const EntryRecord *fileManager() const { return recordAt(m_fileManager); }
    [[nodiscard]] const EntryRecord *weather() const { return recordAt(m_weather); }

    /// Who stands for an application that has a fixed place on another system, such as its Finder. Null for any other
    /// path.
    [[nodiscard]] const EntryRecord *standIn(const QString &path) const;

    /// The id by which the body knows the application: "com.apple.finder" for the file manager.
    [[nodiscard]] QString identifier(const EntryRecord &record) const;

    /// Where the application is that was once at `path` and has this identifier, which may be absent. `isEntry` says
    /// whether there is an entry at a path that is in none of the folders.
    [[nodiscard]] std::optional<QString> locate(const QString &path, const std::optional<QString> &identifier,
        const std::function<bool(const QString &)> &isEntry) const;

    bool operator==(const EntryCatalogue &other) const;

private:
    static constexpr qsizetype none = -1;

    [[nodiscard]] const EntryRecord *recordAt(qsizetype index) const;
    [[nodiscard]] bool isListed(const EntryRecord &record) const;
    [[nodiscard]] QList<qsizetype> handlers(const QString &mimeType) const;
    [[nodiscard]] qsizetype findFileManager() const;
    [[nodiscard]] qsizetype findWeather() const;
    [[nodiscard]] const EntryRecord *wellKnown(const QString &identifier) const;
    [[nodiscard]] const EntryRecord *renamed(const QString &id) const;

    QList<EntryRecord> m_records;
    MimeDefaults m_defaults;
    QStringList m_desktopNames;
    QHash<QString, qsizetype> m_byId;
    QHash<QString, qsizetype> m_byPath;
    QSet<QString> m_hiddenIds;
    qsizetype m_fileManager = none;
    qsizetype m_weather = none;
};

} // namespace moorline
