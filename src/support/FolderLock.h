#pragma once

#include "support/FileDescriptor.h"

#include <QString>

namespace moorline {

/// Keeps the programs that ask for it from changing the files of one folder at the same time. It needs no file of its
/// own, and ends with this object, or with the process however it ends.
class FolderLock final {
public:
    /// Asks once and does not wait.
    explicit FolderLock(const QString &folder);

    /// False while another holds the lock. True also where there are no locks, as on some network file systems.
    [[nodiscard]] bool isMine() const { return m_isMine; }

private:
    FileDescriptor m_folder;
    bool m_isMine;
};

} // namespace moorline
