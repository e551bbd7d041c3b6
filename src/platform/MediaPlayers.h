#pragma once

#include <QCoroTask>
#include <QObject>
#include <QString>
#include <QUrl>
#include <optional>

namespace moorline {

/// The music players, in the order in which they are asked.
enum class MusicSource { spotify, music };

/// What a player can be told.
enum class MusicCommand { playPause, next, previous };

/// What a player says of itself at one moment.
struct PlayerReport {
    /// False as well while it is stopped.
    bool isPlaying = false;
    /// Tells one track of the player from the others, for those who keep its artwork.
    QString trackId;
    /// Each may be empty.
    QString title;
    QString artist;
    QString album;
    /// In seconds; 0 when unknown.
    double duration = 0;
    /// In seconds into the track.
    double position = 0;
    /// Where its artwork is: a file, a web address, or data itself. Absent when it has none or tells of none.
    std::optional<QUrl> artwork;
    /// Whether the player obeys each command now.
    bool canPlayPause = true;
    bool canGoNext = true;
    bool canGoPrevious = true;

    bool operator==(const PlayerReport &) const = default;
};

/// The music players of this session. One that does not run is never started by a question.
class MediaPlayers : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// Whether there is a player to ask.
    [[nodiscard]] virtual bool isRunning(MusicSource source) const = 0;
    /// Absent when it does not run, does not answer in time, is stopped or says what makes no sense.
    [[nodiscard]] virtual QCoro::Task<std::optional<PlayerReport>> query(MusicSource source) = 0;
    /// Where the artwork of the track that plays is, for a player that hands it out when it is asked, and for each
    /// track anew. Absent when there is none.
    [[nodiscard]] virtual QCoro::Task<std::optional<QUrl>> exportArtwork(MusicSource source, QString trackId) = 0;
    /// Nothing happens when it cannot be done.
    virtual void send(MusicSource source, MusicCommand command) = 0;
    /// Brings the player to the front. Nothing happens when it is not to be found.
    virtual void open(MusicSource source) = 0;

Q_SIGNALS:
    /// A player says something else than before, came, or went. Not every system tells.
    void changed();
};

} // namespace moorline
