#pragma once

#include "platform/AppBundles.h"

#include <QFileSystemWatcher>
#include <QStringList>
#include <QThreadPool>
#include <memory>

namespace moorline {

/// The folders for applications are watched for what comes, goes or is replaced in them; one that is not there yet is
/// watched from the first question after it is. What changes deeper within a bundle is not told.
class MacAppBundles final : public AppBundles {
public:
    MacAppBundles();
    /// A listing under way that takes long is left to itself.
    ~MacAppBundles() override;

    [[nodiscard]] QString applicationExtension() const override;
    [[nodiscard]] std::optional<BundleInfo> info(const QString &path) const override;
    [[nodiscard]] std::optional<QString> locate(
        const QString &path, const std::optional<QString> &identifier) const override;
    [[nodiscard]] QCoro::Task<QList<InstalledBundle>> installed() override;

private:
    void watchFolders();
    void forget();

    const QStringList m_folders;
    QFileSystemWatcher m_watcher;
    std::optional<QList<InstalledBundle>> m_known;
    int m_changes = 0;
    /// Where a listing comes to from its thread, which may outlive whoever asked.
    std::shared_ptr<QObject> m_answers = std::make_shared<QObject>();
    std::unique_ptr<QThreadPool> m_thread = std::make_unique<QThreadPool>();
};

} // namespace moorline
