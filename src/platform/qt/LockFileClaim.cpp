#include "platform/qt/LockFileClaim.h"

#include <QDir>

namespace moorline {

namespace {

QString lockPath(const QString &folder)
{
    QDir().mkpath(folder);
    return QDir(folder).filePath(QStringLiteral("instance.lock"));
}

} // namespace

LockFileClaim::LockFileClaim(const QString &folder)
    : m_lock(lockPath(folder))
{
    // However long the bar runs, only the end of its process ends its claim.
    m_lock.setStaleLockTime(0);
}

bool LockFileClaim::take()
{
    return m_lock.tryLock(0) || m_lock.error() != QLockFile::LockFailedError;
}

} // namespace moorline
