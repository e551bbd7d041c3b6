#include "platform/linux/apps/StarterWorkspace.h"

#include "platform/linux/apps/AppStarter.h"
#include "platform/linux/apps/DesktopEntries.h"

namespace moorline {

StarterWorkspace::StarterWorkspace(DesktopEntries &entries, AppStarter &starter, Clock &clock)
    : m_entries(entries)
    , m_starter(starter)
    , m_opener(entries, starter, clock)
{
    connect(&starter, &AppStarter::ended, this, &Workspace::launchEnded);
}

std::optional<QString> StarterWorkspace::applicationPath(const QString &bundleIdentifier) const
{
    return m_entries.locate({}, bundleIdentifier);
}

void StarterWorkspace::open(const QString &applicationPath, const QList<QUrl> &files, Opened opened)
{
    m_starter.open(applicationPath, files, std::move(opened));
}

void StarterWorkspace::openFile(const QUrl &file)
{
    m_opener.open(file);
}

void StarterWorkspace::openAddress(const QUrl &address)
{
    m_starter.openAddress(address);
}

void StarterWorkspace::reveal(const QList<QUrl> &files)
{
    m_starter.reveal(files);
}

void StarterWorkspace::showFolder(const QString &path, Opened opened)
{
    m_starter.showFolder(QUrl::fromLocalFile(path), std::move(opened));
}

} // namespace moorline
