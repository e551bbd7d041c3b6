#include "platform/linux/icons/IconWorker.h"

namespace moorline {

IconWorker::IconWorker(QStringList bases)
    : m_finder(std::move(bases))
{
}

void IconWorker::setTheme(const QString &name)
{
    m_finder.folders().setTheme(name);
    m_watcher.reset();
}

void IconWorker::load(quint64 id, const IconRequest &request, const QStringList &fileIcons, const Abandoned &abandoned)
{
    if (abandoned->load())
        return;
    watch();
    Q_EMIT answered(id, m_finder.picture(request, fileIcons));
}

void IconWorker::refresh()
{
    if (!m_finder.folders().refresh())
        return;
    m_watcher.reset();
    Q_EMIT iconsChanged();
}

void IconWorker::watch()
{
    if (m_watcher)
        return;
    m_watcher = std::make_unique<QFileSystemWatcher>();
    const QStringList folders = m_finder.folders().watchable();
    if (!folders.isEmpty())
        m_watcher->addPaths(folders);
    connect(m_watcher.get(), &QFileSystemWatcher::directoryChanged, this, &IconWorker::foldersTouched);
}

} // namespace moorline
