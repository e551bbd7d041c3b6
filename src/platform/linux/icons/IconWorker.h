#pragma once

#include "platform/linux/icons/IconFinder.h"

#include <QFileSystemWatcher>
#include <atomic>
#include <memory>

namespace moorline {

/// Finds and draws icons on the thread it was moved to, one after the other.
class IconWorker final : public QObject {
    Q_OBJECT
public:
    /// Set by whoever asked once the answer is not wanted any more.
    using Abandoned = std::shared_ptr<std::atomic_bool>;

    explicit IconWorker(QStringList bases);

    void setTheme(const QString &name);
    void load(quint64 id, const IconRequest &request, const QStringList &fileIcons, const Abandoned &abandoned);
    /// Reads the folders anew, if anything in them changed.
    void refresh();

Q_SIGNALS:
    void answered(quint64 id, const QImage &icon);
    /// Something happened in or beside the folders of icons; often several times in a row.
    void foldersTouched();
    /// The folders were read anew: icons may look different now.
    void iconsChanged();

private:
    void watch();

    IconFinder m_finder;
    std::unique_ptr<QFileSystemWatcher> m_watcher;
};

} // namespace moorline
