#pragma once

#include "music/CoverSource.h"
#include "platform/Clock.h"
#include "platform/HttpClient.h"
#include "platform/Pictures.h"

#include <QCache>
#include <QObject>

namespace moorline {

/// Finds the pictures of tracks, wherever they are, and remembers them: players reuse their files, or remove them. One
/// is looked for at a time, the one that was asked for last.
class Covers final : public QObject {
    Q_OBJECT
public:
    /// What pictures are got from. Everything lent here outlives it.
    struct Context {
        Pictures &pictures;
        HttpClient &client;
        Clock &clock;
    };

    /// What is remembered at most, in bytes.
    static constexpr qsizetype capacity = qsizetype(8) * 1024 * 1024;
    /// After how long what was not to be had is looked for again.
    static constexpr std::chrono::seconds retryDelay{60};
    /// Of files that is less at first, and so often: a player may tell of one that it is still writing.
    static constexpr std::chrono::seconds fileRetryDelay{2};
    static constexpr int filesTriedSoon = 3;
    /// How long one look may take: a disk may not answer.
    static constexpr std::chrono::seconds lookLimit{20};
    /// In pixels: enough for a bar at triple scale.
    static constexpr int side = 138;

    explicit Covers(Context context, QObject *parent = nullptr);

    /// The picture of a track that is at this address. Null while it is looked for, and where there is none; changed()
    /// tells when it is worth asking again.
    [[nodiscard]] QImage picture(const QString &trackId, const QUrl &url);
    /// The internet is within reach again: what was not to be had may be.
    void tryAgain();

    /// What the remembered pictures take up.
    [[nodiscard]] qsizetype bytes() const { return m_pictures.totalCost(); }

Q_SIGNALS:
    void changed();

private:
    /// What stands for one track and address, however long they are.
    using Key = QByteArray;

    [[nodiscard]] static Key key(const QString &trackId, const QUrl &url);
    void look(const CoverSource &source);
    void download(const QUrl &url);
    void decode(const QByteArray &data);
    [[nodiscard]] Pictures::Completion taking();
    void take(const QImage &picture);
    void fail();
    /// Whether it was looked for in vain, too short a time ago to look again.
    [[nodiscard]] bool hasToWait(const Key &key);
    void stop();
    void endLook();

    Context m_context;
    QCache<Key, QImage> m_pictures;
    /// When what was not to be had may be looked for again, in uptime.
    QCache<Key, std::chrono::milliseconds> m_failures;
    /// What was asked for last.
    Key m_wanted;
    QString m_wantedTrack;
    QUrl m_wantedUrl;
    bool m_isLooking = false;
    /// What is looked for is in a file, which was not to be had so many times.
    bool m_isFile = false;
    int m_filesTried = 0;
    std::unique_ptr<Clock::Timer> m_limit;
    /// What is under way began before the network came back.
    bool m_isWorthAnother = false;
    std::unique_ptr<HttpClient::Request> m_download;
    std::unique_ptr<Pictures::Request> m_decoding;
    std::unique_ptr<Clock::Timer> m_retry;
};

} // namespace moorline
