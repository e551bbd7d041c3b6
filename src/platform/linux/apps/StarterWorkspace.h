#pragma once

#include "platform/Workspace.h"
#include "platform/linux/apps/FileOpener.h"

namespace moorline {

/// Where nothing is shown on a screen: knows of no application that runs, but starts them. All that is known without a
/// window system.
class StarterWorkspace : public Workspace {
    Q_OBJECT
public:
    /// All of them outlive it.
    StarterWorkspace(DesktopEntries &entries, AppStarter &starter, Clock &clock);

    [[nodiscard]] std::optional<QList<RunningApplication>> runningApplications() const override { return std::nullopt; }
    [[nodiscard]] std::optional<QString> applicationPath(const QString &bundleIdentifier) const override;
    [[nodiscard]] bool activatesInPassing() const override { return false; }
    [[nodiscard]] bool endsWithLastWindow() const override { return true; }
    [[nodiscard]] bool canTerminate([[maybe_unused]] const RunningApplication &application) const override
    {
        return false;
    }
    void activate([[maybe_unused]] const RunningApplication &application) override { }
    void terminate([[maybe_unused]] const RunningApplication &application) override { }
    void open(const QString &applicationPath, const QList<QUrl> &files, Opened opened) override;
    void openFile(const QUrl &file) override;
    void openAddress(const QUrl &address) override;
    void reveal(const QList<QUrl> &files) override;
    void showFolder(const QString &path, Opened opened) override;

private:
    DesktopEntries &m_entries;
    AppStarter &m_starter;
    FileOpener m_opener;
};

} // namespace moorline
