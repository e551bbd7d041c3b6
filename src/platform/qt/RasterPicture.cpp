#include "platform/qt/RasterPicture.h"

#include "platform/Pictures.h"

#include <QBuffer>
#include <QImageReader>
#include <algorithm>
#include <array>

namespace moorline {

namespace {

/// The largest place for a picture, many times over.
constexpr int largestSide = 1024;

struct Beginning {
    QByteArrayView format;
    qsizetype offset;
    QByteArrayView bytes;
};

// Written with their lengths: some hold a zero.
constexpr std::array beginnings{
    Beginning{"png", 0, {"\x89PNG\r\n\x1a\n", 8}},
    Beginning{"jpeg", 0, {"\xff\xd8\xff", 3}},
    Beginning{"gif", 0, {"GIF87a", 6}},
    Beginning{"gif", 0, {"GIF89a", 6}},
    Beginning{"bmp", 0, {"BM", 2}},
    Beginning{"webp", 8, {"WEBP", 4}},
    Beginning{"tiff", 0, {"II*\0", 4}},
    Beginning{"tiff", 0, {"MM\0*", 4}},
    Beginning{"avif", 4, {"ftypavif", 8}},
    Beginning{"heic", 4, {"ftypheic", 8}},
    Beginning{"jxl", 0, {"\xff\x0a", 2}},
    Beginning{"jxl", 0, {"\0\0\0\x0cJXL ", 8}},
};

bool begins(const QByteArray &data, const Beginning &beginning)
{
    return QByteArrayView(data).sliced(std::min(beginning.offset, data.size())).startsWith(beginning.bytes);
}

QRect middleSquare(const QSize &size)
{
    const int side = std::min(size.width(), size.height());
    return {QPoint(size.width() - side, size.height() - side) / 2, QSize(side, side)};
}

} // namespace

QByteArray rasterFormat(const QByteArray &data)
{
    for (const Beginning &beginning : beginnings) {
        if (begins(data, beginning))
            return beginning.format.toByteArray();
    }
    return {};
}

QImage rasterPicture(const QByteArray &data, int side)
{
    const QByteArray format = rasterFormat(data);
    if (side < 1 || side > largestSide || data.size() > Pictures::largestData || format.isEmpty())
        return {};
    QBuffer buffer;
    buffer.setData(data);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer, format);
    // No other reader is asked.
    reader.setAutoDetectImageFormat(false);
    reader.setAutoTransform(true);
    // Of the header alone.
    const QSize size = reader.size();
    if (size.isEmpty() || size.width() > Pictures::longestSide || size.height() > Pictures::longestSide)
        return {};
    reader.setClipRect(middleSquare(size));
    reader.setScaledSize(QSize(side, side));
    return reader.read().convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

} // namespace moorline
