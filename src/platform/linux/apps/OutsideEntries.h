#pragma once

#include "freedesktop/EntryPlaces.h"
#include "freedesktop/EntryRecord.h"
#include "platform/linux/apps/RereadSchedule.h"
#include "platform/qt/Background.h"

#include <QHash>
#include <QObject>
#include <optional>

namespace moorline {

/// Entries that are asked for by their paths and lie in none of the folders for applications: read once, and again when
/// something happened to them. A disk that does not answer holds up nothing but what is known of them.
class OutsideEntries final : public QObject {
    Q_OBJECT
public:
    /// Both outlive it.
    OutsideEntries(Clock &clock, const EntryPlaces &places);

    /// Absent where there is no entry of an application that counts, and before begin().
    [[nodiscard]] const std::optional<EntryRecord> &find(const QString &path);
    /// Whatever was asked for until now is read on another thread, unless it `isInside` the folders; whatever is asked
    /// for from now on, when it is.
    void begin(const std::function<bool(const QString &path)> &isInside);

Q_SIGNALS:
    /// Something else is to be said of one that was asked for.
    void changed();

private:
    using Known = QHash<QString, std::optional<EntryRecord>>;

    /// What was read, and what has happened to it since.
    struct Reading {
        Known entries;
        std::shared_ptr<FolderEvents> events;
    };

    [[nodiscard]] static Reading read(const QStringList &paths, const EntryPlaces &places);
    void readAll();
    void take(const Reading &reading);

    const EntryPlaces &m_places;
    Known m_known;
    bool m_hasBegun = false;
    RereadSchedule m_schedule;
    Background m_background;
};

} // namespace moorline
