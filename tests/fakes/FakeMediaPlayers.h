#pragma once

#include "platform/MediaPlayers.h"
#include "support/Promise.h"

#include <QHash>
#include <QList>
#include <QPair>
#include <QSet>

namespace moorline::test {

/// Players that say what they are given to say: at once, or when told to. Keeps what was asked of them.
class FakeMediaPlayers final : public MediaPlayers {
public:
    using Report = std::optional<PlayerReport>;

    [[nodiscard]] bool isRunning(MusicSource source) const override { return running.contains(source); }
    [[nodiscard]] QCoro::Task<Report> query(MusicSource source) override;
    [[nodiscard]] QCoro::Task<std::optional<QUrl>> exportArtwork(MusicSource source, QString trackId) override;
    void send(MusicSource source, MusicCommand command) override { sent.append({source, command}); }
    void open(MusicSource source) override { opened.append(source); }

    /// A player runs, and says this from now on.
    void say(MusicSource source, const PlayerReport &report)
    {
        running.insert(source);
        reports[source] = report;
    }
    void quit(MusicSource source)
    {
        running.remove(source);
        reports.remove(source);
    }
    /// Answers the query that came first and waits. False when there is none.
    bool answer(const Report &report)
    {
        if (m_queries.isEmpty())
            return false;
        m_queries.takeFirst().resolve(report);
        return true;
    }
    /// The same of artwork.
    bool answerExport(const std::optional<QUrl> &url)
    {
        if (m_exports.isEmpty())
            return false;
        m_exports.takeFirst().resolve(url);
        return true;
    }
    void change() { Q_EMIT changed(); }
    /// How many queries wait for an answer.
    [[nodiscard]] qsizetype waiting() const { return m_queries.size(); }

    QSet<MusicSource> running;
    QHash<MusicSource, PlayerReport> reports;
    /// What is exported, by track.
    QHash<QString, QUrl> artwork;
    /// Whether an answer has to be waited for.
    bool isSlow = false;
    bool isSlowToExport = false;

    QList<MusicSource> queried;
    QList<QPair<MusicSource, QString>> exported;
    QList<QPair<MusicSource, MusicCommand>> sent;
    QList<MusicSource> opened;

private:
    [[nodiscard]] Report said(MusicSource source) const
    {
        const auto found = reports.constFind(source);
        return found == reports.constEnd() ? std::nullopt : std::optional(*found);
    }

    QList<Promise<Report>> m_queries;
    QList<Promise<std::optional<QUrl>>> m_exports;
};

} // namespace moorline::test
