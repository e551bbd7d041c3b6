#include "platform/linux/apps/ApplicationCalls.h"

#include "freedesktop/LaunchRules.h"

namespace moorline {

namespace {

const QString folderManager = QStringLiteral("org.freedesktop.FileManager1");

QStringList texts(const QList<QByteArray> &uris)
{
    QStringList texts;
    for (const QByteArray &uri : uris)
        texts.append(QString::fromLatin1(uri));
    return texts;
}

QVariantMap platformData(const QByteArray &startupId)
{
    const QString token = QString::fromLatin1(startupId);
    return {{QStringLiteral("desktop-startup-id"), token}, {QStringLiteral("activation-token"), token}};
}

QDBusMessage applicationCall(const EntryRecord &record, const QString &method)
{
    return QDBusMessage::createMethodCall(
        record.id, busPath(record.id), QStringLiteral("org.freedesktop.Application"), method);
}

} // namespace

QDBusMessage activationCall(const EntryRecord &record, const QList<QByteArray> &uris, const QByteArray &startupId)
{
    if (uris.isEmpty())
        return applicationCall(record, QStringLiteral("Activate")) << platformData(startupId);
    return applicationCall(record, QStringLiteral("Open")) << texts(uris) << platformData(startupId);
}

QDBusMessage actionCall(const EntryRecord &record, const QString &action, const QByteArray &startupId)
{
    return applicationCall(record, QStringLiteral("ActivateAction"))
        << action << QVariantList() << platformData(startupId);
}

QDBusMessage folderCall(const QString &method, const QList<QByteArray> &uris, const QByteArray &startupId)
{
    return QDBusMessage::createMethodCall(
               folderManager, QStringLiteral("/org/freedesktop/FileManager1"), folderManager, method)
        << texts(uris) << QString::fromLatin1(startupId);
}

} // namespace moorline
