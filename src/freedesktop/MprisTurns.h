#pragma once

#include "freedesktop/MprisProperties.h"

#include <QHash>

namespace moorline {

/// The order in which media players began to play and ended. Each is known by its unique name on the bus.
class MprisTurns final {
public:
    /// What the player says now. One that says nothing goes on as before for all that is known.
    void note(const QString &player, const std::optional<MprisProperties::Status> &status);
    /// The player is gone.
    void forget(const QString &player) { m_records.remove(player); }

    /// Larger the later it began to play or, when it does not play, ended; 0 when it never played.
    [[nodiscard]] quint64 turnOf(const QString &player) const { return m_records.value(player).turn; }

private:
    struct Record {
        bool isPlaying = false;
        quint64 turn = 0;
    };

    QHash<QString, Record> m_records;
    quint64 m_lastTurn = 0;
};

} // namespace moorline
