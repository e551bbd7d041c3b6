#pragma once

#include "app/ImportReport.h"
#include "app/Services.h"
#include "dock/BarMenu.h"
#include "dock/DockWindowController.h"

namespace moorline {

/// Builds everything, owns it, and starts what the run is for.
class AppDelegate final : public QObject {
    Q_OBJECT
public:
    /// The ends of the program that reach outside.
    struct Outlets {
        std::function<ImportResult()> importFromSystemDock;
        /// Writes a line to standard output.
        std::function<void(const QString &)> print;
        std::function<void()> terminate;
    };

    /// `platform` outlives the delegate.
    AppDelegate(Platform &platform, RunPlan plan, Outlets outlets);

    /// Call once the event loop runs.
    void applicationDidFinishLaunching();

    [[nodiscard]] SettingsStore &store() { return m_services.store; }
    [[nodiscard]] const DockWindowController &windowController() const { return m_windowController; }

private:
    void runPreview();
    void runImport();
    void runBar();
    void scheduleSnapshot();
    [[nodiscard]] BarCommands commands() const;
    [[nodiscard]] std::unique_ptr<DockBarView> makeBar(std::function<void(qreal)> contentWidthChange);

    RunPlan m_plan;
    Outlets m_outlets;
    Services m_services;
    DockWindowController m_windowController;
    /// Ends a run that makes one picture.
    std::unique_ptr<Clock::Timer> m_pictureTimer;
};

} // namespace moorline
