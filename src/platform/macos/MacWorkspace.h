#pragma once

#include "platform/Workspace.h"
#import "platform/macos/NotificationObserver.h"

namespace moorline {

/// A process names an application. The few that have none of their own are told apart by nothing, and cannot be asked
/// for anything.
class MacWorkspace final : public Workspace {
public:
    MacWorkspace();

    [[nodiscard]] std::optional<QList<RunningApplication>> runningApplications() const override;
    [[nodiscard]] std::optional<QString> applicationPath(const QString &bundleIdentifier) const override;
    [[nodiscard]] bool activatesInPassing() const override { return false; }
    [[nodiscard]] bool endsWithLastWindow() const override { return false; }
    /// Whether it listens is the application's own affair.
    [[nodiscard]] bool canTerminate([[maybe_unused]] const RunningApplication &application) const override
    {
        return true;
    }
    void activate(const RunningApplication &application) override;
    void terminate(const RunningApplication &application) override;
    void open(const QString &applicationPath, const QList<QUrl> &files, Opened opened) override;
    void openFile(const QUrl &file) override;
    void openAddress(const QUrl &address) override;
    void reveal(const QList<QUrl> &files) override;
    void showFolder(const QString &path, Opened opened) override;

private:
    NotificationObserver m_spaceObserver;
    NotificationObserver m_activationObserver;
    NotificationObserver m_launchObserver;
    NotificationObserver m_terminationObserver;
};

} // namespace moorline
