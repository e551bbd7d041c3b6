#include "music/Covers.h"

#include <QCryptographicHash>
#include <QImage>
#include <utility>

namespace moorline {

namespace {

constexpr qsizetype rememberedFailures = 64;
constexpr int success = 200;

} // namespace

Covers::Covers(Context context, QObject *parent)
    : QObject(parent)
    , m_context(context)
    , m_pictures(capacity)
    , m_failures(rememberedFailures)
{
}

Covers::Key Covers::key(const QString &trackId, const QUrl &url)
{
    QCryptographicHash hash(QCryptographicHash::Sha256);
    const QByteArray track = trackId.toUtf8();
    hash.addData(QByteArray::number(track.size()) + ' ' + track);
    hash.addData(url.toEncoded());
    return hash.result();
}

QImage Covers::picture(const QString &trackId, const QUrl &url)
{
    // An address may be the picture itself: it is looked through once.
    const bool isTheSame = !m_wanted.isEmpty() && trackId == m_wantedTrack && url == m_wantedUrl;
    const Key asked = isTheSame ? m_wanted : key(trackId, url);
    if (asked != m_wanted) {
        stop();
        m_wanted = asked;
        m_wantedTrack = trackId;
        m_wantedUrl = url;
    }
    if (const QImage *known = m_pictures.object(asked))
        return *known;
    if (!m_isLooking && !hasToWait(asked))
        look(coverSource(url));
    return {};
}

void Covers::stop()
{
    endLook();
    m_isWorthAnother = false;
    m_filesTried = 0;
    m_retry.reset();
}

void Covers::endLook()
{
    m_isLooking = false;
    m_limit.reset();
    m_download.reset();
    m_decoding.reset();
}

bool Covers::hasToWait(const Key &key)
{
    const auto *until = m_failures.object(key);
    const auto remaining = until ? *until - m_context.clock.uptime() : std::chrono::milliseconds(0);
    if (remaining <= std::chrono::milliseconds(0))
        return false;
    m_retry = m_context.clock.after(remaining, [this] { Q_EMIT changed(); });
    return true;
}

void Covers::look(const CoverSource &source)
{
    if (std::holds_alternative<std::monostate>(source))
        return;
    m_retry.reset();
    m_isLooking = true;
    m_isFile = std::holds_alternative<CoverFile>(source);
    m_limit = m_context.clock.after(lookLimit, [this] { fail(); });
    if (const auto *file = std::get_if<CoverFile>(&source))
        m_decoding = m_context.pictures.read(file->path, side, taking());
    else if (const auto *address = std::get_if<CoverAddress>(&source))
        download(address->url);
    else if (const auto *embedded = std::get_if<CoverData>(&source))
        m_decoding = m_context.pictures.decodeBase64(embedded->text, side, taking());
}

void Covers::download(const QUrl &url)
{
    const auto took = [this](const HttpAnswer &answer) {
        if (answer.failure || answer.status != success)
            fail();
        else
            decode(answer.body);
    };
    m_download = m_context.client.get(url, took, Pictures::largestData);
}

void Covers::decode(const QByteArray &data)
{
    m_decoding = m_context.pictures.decode(data, side, taking());
}

Pictures::Completion Covers::taking()
{
    return [this](const QImage &picture) { take(picture); };
}

void Covers::take(const QImage &picture)
{
    // One that is not remembered would be looked for at once again.
    if (picture.isNull() || picture.sizeInBytes() > capacity)
        return fail();
    endLook();
    m_isWorthAnother = false;
    m_failures.remove(m_wanted);
    m_pictures.insert(m_wanted, new QImage(picture), picture.sizeInBytes());
    Q_EMIT changed();
}

void Covers::fail()
{
    endLook();
    const bool isSoon = m_isFile && ++m_filesTried <= filesTriedSoon;
    // The network came back while what was asked before that was waited for.
    const auto later = isSoon ? fileRetryDelay : retryDelay;
    const auto delay = std::exchange(m_isWorthAnother, false) ? std::chrono::seconds(0) : later;
    m_failures.insert(m_wanted, new std::chrono::milliseconds(m_context.clock.uptime() + delay));
    m_retry = m_context.clock.after(delay, [this] { Q_EMIT changed(); });
}

void Covers::tryAgain()
{
    m_failures.clear();
    m_isWorthAnother = m_isLooking && m_download;
    if (m_retry)
        Q_EMIT changed();
}

} // namespace moorline
