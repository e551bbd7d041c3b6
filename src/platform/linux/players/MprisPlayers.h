#pragma once

#include "freedesktop/MprisChoice.h"
#include "freedesktop/MprisTurns.h"
#include "platform/MediaPlayers.h"
#include "platform/linux/bus/FollowedNames.h"
#include "platform/linux/players/MprisPlayer.h"

#include <QMap>
#include <memory>
#include <vector>

namespace moorline {

class Workspace;

/// The media players of the session by MPRIS: Spotify is the one of that name, music the best of all others.
class MprisPlayers final : public MediaPlayers {
    Q_OBJECT
public:
    /// What it is built on, all of which outlives it.
    struct Context {
        Bus &sessionBus;
        Clock &clock;
        Workspace &workspace;
    };

    /// Of more players than these, those beyond are not looked at.
    static constexpr size_t mostPlayers = 64;

    explicit MprisPlayers(const Context &context);
    ~MprisPlayers() override;

    [[nodiscard]] bool isRunning(MusicSource source) const override;
    /// What the player said when it last told of a change, and where in its track it is now. One that has not said
    /// anything yet, or does not answer, is asked again with each query, and told of by changed() once it does.
    [[nodiscard]] QCoro::Task<std::optional<PlayerReport>> query(MusicSource source) override;
    /// Always absent: players tell of their artwork by themselves.
    [[nodiscard]] QCoro::Task<std::optional<QUrl>> exportArtwork(MusicSource source, QString trackId) override;
    /// To the player that was reported last, as are these to whoever looks at that report.
    void send(MusicSource source, MusicCommand command) override;
    void open(MusicSource source) override;

private:
    struct Row {
        std::unique_ptr<MprisPlayer> player;
        QString name;
    };

    void follow();
    [[nodiscard]] bool removeAllBut(const QMap<QString, QString> &nameOfOwner);
    [[nodiscard]] bool add(const QMap<QString, QString> &nameOfOwner);
    void note(const MprisPlayer &player);
    void refresh(MusicSource source) const;
    [[nodiscard]] QList<MprisCandidate> candidates() const;
    /// The one to ask; null when there is none that plays or could go on.
    [[nodiscard]] MprisPlayer *best(MusicSource source) const;
    /// The one that is meant by whoever looks at the last report.
    [[nodiscard]] MprisPlayer *meant(MusicSource source) const;

    Context m_context;
    FollowedNames m_names;
    std::vector<Row> m_rows;
    MprisTurns m_turns;
    /// Unique names of the players that were reported last.
    QMap<MusicSource, QString> m_reported;
};

} // namespace moorline
