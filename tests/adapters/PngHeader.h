#pragma once

#include <QByteArray>
#include <QtEndian>

namespace moorline::test {

/// A PNG file that says it is this large, and ends there.
inline QByteArray pngHeader(quint32 width, quint32 height)
{
    QByteArray chunk("IHDR");
    for (const quint32 number : {width, height}) {
        const quint32 bytes = qToBigEndian(number);
        chunk.append(reinterpret_cast<const char *>(&bytes), sizeof bytes);
    }
    chunk += QByteArray::fromHex("0806000000");
    quint32 crc = 0xffffffff;
    for (const char byte : chunk) {
        crc ^= quint8(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc >> 1U) ^ ((crc & 1U) != 0 ? 0xedb88320U : 0U);
    }
    const quint32 check = qToBigEndian(~crc);
    return QByteArray::fromHex("89504e470d0a1a0a0000000d") + chunk
        + QByteArray(reinterpret_cast<const char *>(&check), sizeof check);
}

} // namespace moorline::test
