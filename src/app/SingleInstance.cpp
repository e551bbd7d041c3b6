#include "app/SingleInstance.h"

#include <QDir>

namespace moorline {

namespace {

QString lockPath(const QString &folder)
{
    QDir().mkpath(folder);
    return QDir(folder).filePath(QStringLiteral("instance.lock"));
}

} // namespace

SingleInstance::SingleInstance(const QString &folder)
    : m_lock(lockPath(folder))
{
    // However long the bar runs, only the end of its process ends its claim.
    m_lock.setStaleLockTime(0);
    m_isFirst = m_lock.tryLock(0) || m_lock.error() != QLockFile::LockFailedError;
}

} // namespace moorline
