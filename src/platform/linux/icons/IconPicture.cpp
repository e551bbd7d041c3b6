#include "platform/linux/icons/IconPicture.h"

#include "support/RegularFile.h"

#include <QBuffer>
#include <QFileInfo>
#include <QImageReader>
#include <QPainter>
#include <QSvgRenderer>
#include <QXmlStreamReader>

namespace moorline {

namespace {

constexpr qint64 largestFile = qint64(4) * 1024 * 1024;
/// Of what is unpacked: 64 MiB of pixels.
constexpr int largestPictureSide = 4096;
/// An icon at a scale of four on the largest screen.
constexpr int largestSide = 1024;

QRect fittedRect(const QSize &size, int side)
{
    const QSize fitted = size.scaled(side, side, Qt::KeepAspectRatio).expandedTo({1, 1});
    return {QPoint(side - fitted.width(), side - fitted.height()) / 2, fitted};
}

QImage emptySquare(int side)
{
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

QImage rasterPicture(const QByteArray &content, const QByteArray &format, int side)
{
    QBuffer buffer;
    buffer.setData(content);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer, format);
    reader.setDecideFormatFromContent(false);
    const QSize size = reader.size();
    if (size.isEmpty() || size.width() > largestPictureSide || size.height() > largestPictureSide)
        return {};
    QImage picture = reader.read().convertToFormat(QImage::Format_ARGB32_Premultiplied);
    if (picture.isNull() || picture.size() == QSize(side, side))
        return picture;
    const QRect place = fittedRect(picture.size(), side);
    QImage image = emptySquare(side);
    QPainter(&image).drawImage(
        place.topLeft(), picture.scaled(place.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    return image;
}

/// Whether everything that is drawn stands in the file itself. Otherwise the renderer would open whatever path is
/// named, be it a pipe that nobody writes to. Compressed content is refused too: it may be a thousand times as large.
bool isSelfContained(const QByteArray &svg)
{
    QXmlStreamReader reader(svg);
    while (!reader.atEnd()) {
        const auto token = reader.readNext();
        if (token == QXmlStreamReader::ProcessingInstruction)
            return false;
        if (token != QXmlStreamReader::StartElement || reader.name() != QLatin1StringView("image"))
            continue;
        const auto attributes = reader.attributes();
        for (const QXmlStreamAttribute &attribute : attributes) {
            if (attribute.name() == QLatin1StringView("href")
                && !attribute.value().startsWith(QLatin1StringView("data:")))
                return false;
        }
    }
    return !reader.hasError();
}

QImage drawnPicture(const QByteArray &svg, int side)
{
    QSvgRenderer renderer;
    if (!isSelfContained(svg) || !renderer.load(svg) || renderer.defaultSize().isEmpty())
        return {};
    QImage image = emptySquare(side);
    QPainter painter(&image);
    renderer.render(&painter, fittedRect(renderer.defaultSize(), side));
    return image;
}

} // namespace

QImage iconPicture(const QString &path, int side)
{
    const QString extension = QFileInfo(path).suffix().toLower();
    const bool isDrawing = extension == QLatin1StringView("svg");
    const bool isRaster = extension == QLatin1StringView("png") || extension == QLatin1StringView("xpm");
    if (side < 1 || side > largestSide || (!isDrawing && !isRaster))
        return {};
    const auto content = regularFileContent(path, largestFile);
    if (!content)
        return {};
    return isDrawing ? drawnPicture(*content, side) : rasterPicture(*content, extension.toLatin1(), side);
}

} // namespace moorline
