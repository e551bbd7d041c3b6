#pragma once

#include "platform/MediaPlayers.h"

namespace moorline {

class AppleScriptRunner;
class Files;
class Workspace;

/// The players of macOS, which are asked and told by scripts. Nobody tells of a change.
class ScriptedMediaPlayers final : public MediaPlayers {
    Q_OBJECT
public:
    /// What the players are reached through. Everything lent here outlives them.
    struct Context {
        const AppleScriptRunner &scripts;
        Workspace &workspace;
        const Files &files;
        /// The path of the user's folder for what need not last.
        QString temporaryFolder;
    };

    static constexpr std::chrono::seconds queryTimeout{4};
    static constexpr std::chrono::seconds artworkTimeout{6};

    explicit ScriptedMediaPlayers(Context context);

    [[nodiscard]] bool isRunning(MusicSource source) const override;
    [[nodiscard]] QCoro::Task<std::optional<PlayerReport>> query(MusicSource source) override;
    /// Music writes it to a file, which is left to the system to clear away. Spotify tells where it is by itself.
    [[nodiscard]] QCoro::Task<std::optional<QUrl>> exportArtwork(MusicSource source, QString trackId) override;
    void send(MusicSource source, MusicCommand command) override;
    void open(MusicSource source) override;

private:
    Context m_context;
};

/// Where the artwork of a track is exported to. Whatever a track is called, the file is in that folder.
[[nodiscard]] QString artworkPath(const QString &temporaryFolder, const QString &trackId);

} // namespace moorline
