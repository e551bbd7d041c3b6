#include "support/FileUrls.h"

#include <QStringDecoder>

namespace moorline {

QUrl fileUrl(const QByteArray &path)
{
    return QUrl::fromEncoded("file://" + path.toPercentEncoding("/"));
}

QByteArray pathBytes(const QUrl &file)
{
    return QByteArray::fromPercentEncoding(file.path(QUrl::FullyEncoded).toLatin1());
}

std::optional<QString> pathText(const QUrl &file)
{
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = decoder(pathBytes(file));
    return decoder.hasError() ? std::nullopt : std::optional(std::move(text));
}

} // namespace moorline
