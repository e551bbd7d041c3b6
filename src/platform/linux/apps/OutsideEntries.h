#pragma once

#include "freedesktop/EntryPlaces.h"
#include "freedesktop/EntryRecord.h"
#include "platform/linux/apps/RereadSchedule.h"
#include "platform/linux/desktop/MountLooks.h"
#include "support/Promise.h"

#include <QCoroTask>
#include <QHash>
#include <QObject>
#include <QSet>
#include <optional>

namespace moorline {

/// Entries that are asked for by their paths and lie in none of the folders for applications: read once, on other
/// threads, and again when something happened to them. A disk that does not answer holds up nothing but what is known
/// of them; they are read again when it does.
class OutsideEntries final : public QObject {
    Q_OBJECT
public:
    /// Both outlive it.
    OutsideEntries(Clock &clock, const EntryPlaces &places);
    ~OutsideEntries() override;

    /// Absent where there is no entry of an application that counts, until it was read, and before begin(). What is
    /// asked for the first time is read from then on.
    [[nodiscard]] std::optional<EntryRecord> find(const QString &path);
    /// Comes back when everything that was asked for was read, or is on a disk that does not answer.
    [[nodiscard]] QCoro::Task<> lookAt(QStringList paths);
    /// Whatever was asked for until now is read, unless it `isInside` the folders; whatever is asked for from now on,
    /// when it is.
    void begin(const std::function<bool(const QString &path)> &isInside);

Q_SIGNALS:
    /// Something else is to be said of one that was asked for.
    void changed();

private:
    using Known = QHash<QString, std::optional<EntryRecord>>;

    /// One look at all that was asked for.
    struct Reading {
        qsizetype unread;
        Known entries;
        /// What has happened to them since.
        std::shared_ptr<FolderEvents> events = std::make_shared<FolderEvents>();
    };

    void note(const QString &path);
    void readAll();
    void take(Reading &reading, const QString &path, const std::optional<std::optional<EntryRecord>> &answer);
    void end(const Reading &reading);

    const EntryPlaces &m_places;
    Known m_known;
    bool m_hasBegun = false;
    /// Which of them the reading that is under way does not read.
    QSet<QString> m_unasked;
    bool m_isReading = false;
    QList<Promise<bool>> m_waiting;
    RereadSchedule m_schedule;
    MountLooks m_looks;
};

} // namespace moorline
