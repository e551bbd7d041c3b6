#pragma once

#include "platform/linux/icons/IconWorker.h"

#include <QThread>

namespace moorline {

/// The thread that finds icons, as the main thread sees it. Nothing here waits, but for the end.
class IconThread final : public QObject {
    Q_OBJECT
public:
    explicit IconThread(const QStringList &bases);
    ~IconThread() override;

    void setTheme(const QString &name);
    void load(
        quint64 id, const IconRequest &request, const QStringList &fileIcons, const IconWorker::Abandoned &abandoned);
    void refresh();

Q_SIGNALS:
    void answered(quint64 id, const QImage &icon);
    void foldersTouched();
    void iconsChanged();

private:
    QThread *m_thread;
    /// Lives on the thread and ends with it.
    IconWorker *m_worker;
};

} // namespace moorline
