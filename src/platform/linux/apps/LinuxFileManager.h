#pragma once

#include "platform/FileManager.h"

#include <QString>

namespace moorline {

/// Whichever file manager the desktop has. Its folder for new windows is the home folder.
class LinuxFileManager final : public FileManager {
public:
    /// `workspace` outlives it.
    LinuxFileManager(Workspace &workspace, const QString &homeFolder);

    void comeForward(Workspace::Opened opened) override;

private:
    Workspace &m_workspace;
    QString m_homeFolder;
};

} // namespace moorline
