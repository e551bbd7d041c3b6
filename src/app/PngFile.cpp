#include "app/PngFile.h"

#include <QBuffer>
#include <QImage>
#include <QSaveFile>

namespace moorline {

std::optional<QByteArray> encodedPng(const QImage &image)
{
    QByteArray data;
    QBuffer buffer(&data);
    if (!buffer.open(QIODevice::WriteOnly) || !image.save(&buffer, "PNG"))
        return std::nullopt;
    return data;
}

std::optional<QString> writeFile(const QString &path, const QByteArray &data)
{
    QSaveFile file(path);
    // A device or a pipe cannot be replaced, only written to.
    file.setDirectWriteFallback(true);
    if (!file.open(QIODevice::WriteOnly) || file.write(data) != data.size() || !file.commit())
        return file.errorString();
    return std::nullopt;
}

} // namespace moorline
