#include "freedesktop/MprisTurns.h"

#include <utility>

namespace moorline {

void MprisTurns::note(const QString &player, const std::optional<MprisProperties::Status> &status)
{
    if (!status)
        return;
    Record &record = m_records[player];
    const bool isPlaying = status == MprisProperties::Status::playing;
    if (std::exchange(record.isPlaying, isPlaying) != isPlaying)
        record.turn = ++m_lastTurn;
}

} // namespace moorline
