#include "music/CoverSource.h"

#include "platform/Pictures.h"
#include "support/FileUrls.h"

namespace moorline {

namespace {

/// Of base64 four letters stand for three bytes, and some of them may be written in three.
constexpr qsizetype largestText = (Pictures::largestData + 2) / 3 * 4 * 3;

/// What stands before the comma in the address of a picture that is in the address.
bool isPictureInBase64(QByteArrayView about)
{
    const QByteArray lower = about.toByteArray().toLower();
    return lower.startsWith("image/") && !lower.startsWith("image/svg") && lower.endsWith(";base64");
}

CoverSource embedded(const QUrl &url)
{
    const QByteArray text = url.path(QUrl::FullyEncoded).toLatin1();
    const qsizetype comma = text.indexOf(',');
    if (comma < 0 || !isPictureInBase64(QByteArrayView(text).first(comma)))
        return {};
    const QByteArray letters = text.sliced(comma + 1);
    if (letters.isEmpty() || letters.size() > largestText)
        return {};
    return CoverData{letters};
}

/// Only of this machine.
CoverSource local(const QUrl &url)
{
    const bool isHere = url.host().isEmpty() || url.host() == QLatin1StringView("localhost");
    const std::optional<QString> path = isHere ? pathText(url) : std::nullopt;
    if (!path || !path->startsWith(u'/'))
        return {};
    return CoverFile{*path};
}

/// Spotify tells addresses at a host that does not serve pictures any more.
QUrl atItsHost(QUrl url)
{
    const QString path = url.path(QUrl::FullyEncoded);
    if (url.host() == QLatin1StringView("open.spotify.com") && path.startsWith(QLatin1StringView("/image/")))
        url.setHost(QStringLiteral("i.scdn.co"));
    return url;
}

} // namespace

CoverSource coverSource(const QUrl &url)
{
    const QString scheme = url.scheme();
    if (scheme == QLatin1StringView("file"))
        return local(url);
    if (scheme == QLatin1StringView("http") || scheme == QLatin1StringView("https"))
        return CoverAddress{atItsHost(url)};
    if (scheme == QLatin1StringView("data"))
        return embedded(url);
    return {};
}

} // namespace moorline
