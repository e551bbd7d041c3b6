#include "music/ScriptedMediaPlayers.h"

#include "music/PlayerScripts.h"
#include "platform/Files.h"
#include "platform/Workspace.h"
#include "system/AppleScriptRunner.h"

#include <QPointer>
#include <algorithm>

namespace moorline {

ScriptedMediaPlayers::ScriptedMediaPlayers(Context context)
    : m_context(std::move(context))
{
}

bool ScriptedMediaPlayers::isRunning(MusicSource source) const
{
    const auto running = m_context.workspace.runningApplications().value_or(QList<RunningApplication>());
    return std::any_of(
        running.begin(), running.end(), [identifier = bundleIdentifier(source)](const RunningApplication &application) {
            return application.bundleIdentifier == identifier && !application.isTerminated;
        });
}

QCoro::Task<std::optional<PlayerReport>> ScriptedMediaPlayers::query(MusicSource source)
{
    const QString script = queryScript(source);
    const std::optional<QString> reply = co_await m_context.scripts.run(script, queryTimeout);
    co_return reply ? parsedReply(*reply) : std::nullopt;
}

QCoro::Task<std::optional<QUrl>> ScriptedMediaPlayers::exportArtwork(MusicSource source, QString trackId)
{
    if (source != MusicSource::music)
        co_return std::nullopt;
    QPointer<ScriptedMediaPlayers> alive{this};
    const QString path = artworkPath(m_context.temporaryFolder, trackId);
    const QString script = artworkScript(path);
    const std::optional<QString> reply = co_await m_context.scripts.run(script, artworkTimeout);
    const bool isWritten = alive && reply == QLatin1StringView("OK") && m_context.files.exists(path);
    co_return isWritten ? std::optional(QUrl::fromLocalFile(path)) : std::nullopt;
}

void ScriptedMediaPlayers::send(MusicSource source, MusicCommand command)
{
    m_context.scripts.runDetached(commandScript(source, command));
}

void ScriptedMediaPlayers::open(MusicSource source)
{
    if (const auto path = m_context.workspace.applicationPath(bundleIdentifier(source)))
        m_context.workspace.open(*path, {}, nullptr);
}

QString artworkPath(const QString &temporaryFolder, const QString &trackId)
{
    // Letters, digits, "-" and "_" are all that is left as it is.
    const QByteArray name = QUrl::toPercentEncoding(trackId, {}, ".~");
    return temporaryFolder + QStringLiteral("/moorline-artwork-") + QString::fromLatin1(name) + QStringLiteral(".dat");
}

} // namespace moorline
