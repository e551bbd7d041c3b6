#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

QT_BEGIN_NAMESPACE
class QImage;
QT_END_NAMESPACE

namespace moorline {

/// Absent when the image is empty or cannot be encoded.
[[nodiscard]] std::optional<QByteArray> encodedPng(const QImage &image);

/// Writes the whole file or nothing. Gives what went wrong; absent when all went well.
[[nodiscard]] std::optional<QString> writeFile(const QString &path, const QByteArray &data);

} // namespace moorline
