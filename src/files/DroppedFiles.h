#pragma once

#include <QList>
#include <QStringList>
#include <QUrl>

QT_BEGIN_NAMESPACE
class QMimeData;
QT_END_NAMESPACE

namespace moorline {

/// Whether what is offered in these formats may hold files. Asks nothing of whoever offers it.
[[nodiscard]] bool mayHoldFiles(const QStringList &formats);
/// The files among what was dropped, in drop order; everything that is no local file is left out.
[[nodiscard]] QList<QUrl> loadDroppedFileURLs(const QMimeData &dropped);

} // namespace moorline
