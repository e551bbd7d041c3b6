#include "fakes/FakeMediaPlayers.h"

namespace moorline::test {

QCoro::Task<FakeMediaPlayers::Report> FakeMediaPlayers::query(MusicSource source)
{
    queried.append(source);
    if (!isSlow)
        co_return said(source);
    const Promise<Report> promise;
    m_queries.append(promise);
    co_return co_await promise;
}

QCoro::Task<std::optional<QUrl>> FakeMediaPlayers::exportArtwork(MusicSource source, QString trackId)
{
    exported.append({source, trackId});
    if (!isSlowToExport)
        co_return artwork.contains(trackId) ? std::optional(artwork.value(trackId)) : std::nullopt;
    const Promise<std::optional<QUrl>> promise;
    m_exports.append(promise);
    co_return co_await promise;
}

} // namespace moorline::test
