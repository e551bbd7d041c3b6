#include "platform/linux/apps/LinuxFileManager.h"

#include "freedesktop/EntryCatalogue.h"

#include <algorithm>

namespace moorline {

namespace {

bool isFileManagerWithWindow(const RunningApplication &application)
{
    return application.bundleIdentifier == fileManagerIdentifier
        && application.activationPolicy == ActivationPolicy::regular;
}

} // namespace

LinuxFileManager::LinuxFileManager(Workspace &workspace, const QString &homeFolder)
    : m_workspace(workspace)
    , m_homeFolder(homeFolder)
{
}

void LinuxFileManager::comeForward(Workspace::Opened opened)
{
    const auto running = m_workspace.runningApplications().value_or(QList<RunningApplication>());
    const auto manager = std::find_if(running.begin(), running.end(), isFileManagerWithWindow);
    if (manager == running.end())
        return m_workspace.showFolder(m_homeFolder, std::move(opened));
    m_workspace.activate(*manager);
    if (opened)
        opened(std::nullopt);
}

} // namespace moorline
