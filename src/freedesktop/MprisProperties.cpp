#include "freedesktop/MprisProperties.h"

#include "freedesktop/BusNumber.h"

#include <QCryptographicHash>
#include <QStringList>
#include <algorithm>
#include <cmath>
#include <limits>

namespace moorline {

namespace {

constexpr double microsecondsPerSecond = 1e6;
// Streams tell of lengths that no track has, some players the largest number there is.
constexpr double longestTrack = 7 * 24 * 60 * 60;
constexpr qsizetype longestText = 4096;
// Ten mebibytes in base64, and what stands before them.
constexpr qsizetype longestPicture = qsizetype(14) * 1024 * 1024;

std::optional<double> number(const QVariant &value)
{
    const double told = isBusNumber(value) ? value.toDouble() : std::numeric_limits<double>::quiet_NaN();
    return std::isfinite(told) ? std::optional(told) : std::nullopt;
}

QString text(const QVariant &value)
{
    return value.typeId() == QMetaType::QString ? value.toString().left(longestText) : QString();
}

/// Some tell one artist as a text.
QString artists(const QVariant &value)
{
    if (value.typeId() != QMetaType::QStringList)
        return text(value);
    QString all;
    const QStringList names = value.toStringList();
    for (const QString &name : names) {
        if (name.trimmed().isEmpty())
            continue;
        all += (all.isEmpty() ? QString() : QStringLiteral(", ")) + name.left(longestText);
        if (all.size() >= longestText)
            break;
    }
    return all.left(longestText);
}

/// What is not said is allowed: a player that refuses does no harm.
bool truth(const QVariant &value)
{
    return value.typeId() != QMetaType::Bool || value.toBool();
}

double duration(const QVariant &microseconds)
{
    const double seconds = number(microseconds).value_or(0) / microsecondsPerSecond;
    return seconds > 0 && seconds <= longestTrack ? seconds : 0;
}

std::optional<QUrl> artwork(const QString &address)
{
    const bool isPicture = address.startsWith(QLatin1StringView("data:image/"), Qt::CaseInsensitive);
    if (address.size() > (isPicture ? longestPicture : longestText))
        return std::nullopt;
    const QUrl url(address);
    const bool isElsewhere =
        QStringList{QStringLiteral("file"), QStringLiteral("http"), QStringLiteral("https")}.contains(url.scheme());
    return url.isValid() && (isPicture || isElsewhere) ? std::optional(url) : std::nullopt;
}

std::optional<MprisProperties::Status> status(const QVariant &value)
{
    using Status = MprisProperties::Status;
    const QString told = text(value);
    if (told == QLatin1StringView("Playing"))
        return Status::playing;
    if (told == QLatin1StringView("Paused"))
        return Status::paused;
    return told == QLatin1StringView("Stopped") ? std::optional(Status::stopped) : std::nullopt;
}

std::optional<qint64> process(const QVariant &value)
{
    const double told = number(value).value_or(0);
    return told >= 1 && told <= std::numeric_limits<qint32>::max() ? std::optional(qint64(told)) : std::nullopt;
}

void takeArtwork(MprisProperties &properties, const QVariant &value, const std::optional<MprisProperties> &before)
{
    const QString told = value.typeId() == QMetaType::QString ? value.toString() : QString();
    const bool isKnown = before && before->artwork && told == before->artworkText;
    properties.artwork = isKnown ? before->artwork : artwork(told);
    if (properties.artwork)
        properties.artworkText = isKnown ? before->artworkText : told;
}

void takeMetadata(
    MprisProperties &properties, const QVariantMap &metadata, const std::optional<MprisProperties> &before)
{
    properties.trackId = text(metadata.value(QStringLiteral("mpris:trackid")));
    properties.url = text(metadata.value(QStringLiteral("xesam:url")));
    properties.title = text(metadata.value(QStringLiteral("xesam:title")));
    properties.artist = artists(metadata.value(QStringLiteral("xesam:artist")));
    properties.album = text(metadata.value(QStringLiteral("xesam:album")));
    properties.duration = duration(metadata.value(QStringLiteral("mpris:length")));
    takeArtwork(properties, metadata.value(QStringLiteral("mpris:artUrl")), before);
    properties.spokenForProcess = process(metadata.value(QStringLiteral("kde:pid")));
}

/// As far as its last part is one; decoded.
QString fileName(const QString &url)
{
    return QUrl(url).fileName(QUrl::FullyDecoded);
}

} // namespace

std::optional<MprisProperties> mprisProperties(const QVariantMap &player, const std::optional<MprisProperties> &before)
{
    const auto told = status(player.value(QStringLiteral("PlaybackStatus")));
    if (!told)
        return std::nullopt;
    MprisProperties properties{.status = *told};
    const QVariant metadata = player.value(QStringLiteral("Metadata"));
    if (metadata.typeId() == QMetaType::QVariantMap)
        takeMetadata(properties, metadata.toMap(), before);
    const auto can = [&player](const char *name) { return truth(player.value(QLatin1StringView(name))); };
    const bool isControlled = can("CanControl");
    const bool isPlaying = properties.status == MprisProperties::Status::playing;
    properties.canPlayPause = isControlled && can(isPlaying ? "CanPause" : "CanPlay");
    properties.canGoNext = isControlled && can("CanGoNext");
    properties.canGoPrevious = isControlled && can("CanGoPrevious");
    return properties;
}

MprisIdentity mprisIdentity(const QVariantMap &root)
{
    const QVariant canRaise = root.value(QStringLiteral("CanRaise"));
    return {.name = text(root.value(QStringLiteral("Identity"))),
        .desktopEntry = text(root.value(QStringLiteral("DesktopEntry"))),
        .canRaise = canRaise.typeId() == QMetaType::Bool && canRaise.toBool()};
}

double mprisPosition(const QVariant &microseconds, double duration)
{
    const double seconds = number(microseconds).value_or(0) / microsecondsPerSecond;
    return std::clamp(seconds, 0.0, duration > 0 ? duration : longestTrack);
}

QString shownTitle(const MprisProperties &properties, const MprisIdentity &identity)
{
    if (!properties.title.trimmed().isEmpty())
        return properties.title;
    const QString name = fileName(properties.url);
    return name.trimmed().isEmpty() ? identity.name : name;
}

QString trackDigest(const QString &owner, const MprisProperties &properties)
{
    QCryptographicHash hash(QCryptographicHash::Sha256);
    for (const QString &part :
        {owner, properties.trackId, properties.url, properties.title, properties.artist, properties.album}) {
        hash.addData(part.toUtf8());
        // No text on a bus holds one, so that two parts are never taken for two others.
        hash.addData(QByteArrayView("\0", 1));
    }
    return QString::fromLatin1(hash.result().toHex());
}

} // namespace moorline
