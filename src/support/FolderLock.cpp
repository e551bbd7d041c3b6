#include "support/FolderLock.h"

#include <QFile>
#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>

namespace moorline {

FolderLock::FolderLock(const QString &folder)
    : m_folder(::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))
    , m_isMine(!m_folder.isOpen() || ::flock(m_folder.get(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK)
{
}

} // namespace moorline
