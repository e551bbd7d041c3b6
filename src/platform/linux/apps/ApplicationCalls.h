#pragma once

#include "freedesktop/EntryRecord.h"

#include <QDBusMessage>

namespace moorline {

// What is asked of applications on the session bus. Files and addresses are encoded, `startupId` is the launch's.

/// Come to the front, or open these.
[[nodiscard]] QDBusMessage activationCall(
    const EntryRecord &record, const QList<QByteArray> &uris, const QByteArray &startupId);
/// Do one of the further things that the entry offers.
[[nodiscard]] QDBusMessage actionCall(const EntryRecord &record, const QString &action, const QByteArray &startupId);
/// "ShowItems" or "ShowFolders", of whoever manages files.
[[nodiscard]] QDBusMessage folderCall(
    const QString &method, const QList<QByteArray> &uris, const QByteArray &startupId);

} // namespace moorline
