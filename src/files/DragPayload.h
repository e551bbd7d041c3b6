#pragma once

#include <QList>
#include <QUrl>

QT_BEGIN_NAMESPACE
class QMimeData;
QT_END_NAMESPACE

namespace moorline {

/// The files among what was dropped, in drop order; everything that is no local file is left out.
[[nodiscard]] QList<QUrl> loadDroppedFileURLs(const QMimeData &dropped);

} // namespace moorline
