#pragma once

#include "app/Services.h"
#include "dock/BarMenu.h"
#include "dock/DockWindowController.h"

namespace moorline {

class PreviewRenderer;

/// Builds everything, owns it, and starts what the run is for.
class AppDelegate final : public QObject {
    Q_OBJECT
public:
    /// The ends of the program that reach outside.
    struct Outlets {
        /// Writes a line to standard output.
        std::function<void(const QString &)> print;
        std::function<void()> terminate;
    };

    /// `platform` outlives the delegate.
    AppDelegate(Platform &platform, RunPlan plan, Outlets outlets);
    ~AppDelegate() override;

    /// Call once the event loop runs.
    void applicationDidFinishLaunching();

    [[nodiscard]] SettingsStore &store() { return m_services.store; }
    [[nodiscard]] const DockWindowController &windowController() const { return m_windowController; }

private:
    void runPreview();
    QCoro::Task<> runImport();
    void runBar();
    void scheduleSnapshot();
    [[nodiscard]] BarCommands commands() const;
    [[nodiscard]] std::unique_ptr<DockBarView> makeBar(std::function<void(qreal)> contentWidthChange);

    RunPlan m_plan;
    Outlets m_outlets;
    Services m_services;
    DockWindowController m_windowController;
    /// In a run that makes a picture of a bar without a panel.
    std::unique_ptr<PreviewRenderer> m_preview;
    /// Ends a run that makes one picture.
    std::unique_ptr<Clock::Timer> m_pictureTimer;
};

} // namespace moorline
