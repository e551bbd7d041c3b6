#include "ToneFile.h"

#include <QtEndian>
#include <cmath>

namespace moorline::test {

namespace {

constexpr int samplesPerSecond = 8000;
constexpr double pitch = 440;

template <typename Number>
QByteArray little(Number number)
{
    const Number bytes = qToLittleEndian(number);
    return {reinterpret_cast<const char *>(&bytes), sizeof bytes};
}

QByteArray big(quint32 number)
{
    const quint32 bytes = qToBigEndian(number);
    return {reinterpret_cast<const char *>(&bytes), sizeof bytes};
}

/// Of RIFF: begins at an even place.
QByteArray chunk(const char *name, const QByteArray &content)
{
    return QByteArray(name) + little(quint32(content.size())) + content + QByteArray(content.size() % 2, '\0');
}

/// Of ID3v2.3: id3.org/id3v2.3.0, 3.3.
QByteArray frame(const char *name, const QByteArray &content)
{
    return QByteArray(name) + big(quint32(content.size())) + QByteArray(2, '\0') + content;
}

/// 0 stands for Latin-1.
QByteArray textFrame(const char *name, const QString &text)
{
    return frame(name, '\0' + text.toLatin1());
}

/// 3 stands for the front cover, which has no description.
QByteArray pictureFrame(const QByteArray &png)
{
    return frame("APIC", QByteArray("\0image/png\0\3\0", 13) + png);
}

/// Seven bits of a size in each byte.
QByteArray synchsafe(qsizetype size)
{
    QByteArray bytes;
    for (const int shift : {21, 14, 7, 0})
        bytes.append(char(quint64(size) >> quint64(shift) & 0x7fU));
    return bytes;
}

QByteArray tag(const ToneTags &tags)
{
    const QByteArray frames = textFrame("TIT2", tags.title) + textFrame("TPE1", tags.artist)
        + textFrame("TALB", tags.album) + pictureFrame(tags.picture);
    return QByteArray("ID3\3\0\0", 6) + synchsafe(frames.size()) + frames;
}

QByteArray tone(int seconds)
{
    QByteArray samples;
    for (int sample = 0; sample < seconds * samplesPerSecond; ++sample)
        samples += little(qint16(8000 * std::sin(2 * M_PI * pitch * sample / samplesPerSecond)));
    return samples;
}

/// Uncompressed, one channel of 16 bits.
QByteArray format()
{
    return little(quint16(1)) + little(quint16(1)) + little(quint32(samplesPerSecond))
        + little(quint32(samplesPerSecond * 2)) + little(quint16(2)) + little(quint16(16));
}

} // namespace

QByteArray toneFile(int seconds, const ToneTags &tags)
{
    return chunk("RIFF", "WAVE" + chunk("fmt ", format()) + chunk("id3 ", tag(tags)) + chunk("data", tone(seconds)));
}

} // namespace moorline::test
