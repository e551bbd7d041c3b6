#pragma once

#include "freedesktop/EntryPlaces.h"
#include "freedesktop/EntryRecord.h"
#include "platform/Clock.h"
#include "platform/linux/apps/FolderEvents.h"
#include "platform/qt/Background.h"

#include <QHash>
#include <QObject>
#include <QSocketNotifier>
#include <optional>

namespace moorline {

/// Entries that are asked for by their paths and lie in none of the folders for applications: read once, and again when
/// something happened to them. A disk that does not answer holds up nothing but what is known of them.
class OutsideEntries final : public QObject {
    Q_OBJECT
public:
    /// What happens within this is one change.
    static constexpr std::chrono::milliseconds batchTime{500};

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
    void follow(std::shared_ptr<FolderEvents> events);
    void noteNews();

    Clock &m_clock;
    const EntryPlaces &m_places;
    Known m_known;
    bool m_hasBegun = false;
    bool m_isReading = false;
    /// Something happened while they were being read.
    bool m_isOutdated = false;
    std::shared_ptr<FolderEvents> m_events;
    std::unique_ptr<QSocketNotifier> m_notifier;
    std::unique_ptr<Clock::Timer> m_reload;
    Background m_background;
};

} // namespace moorline
