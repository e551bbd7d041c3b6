#include "app/AppDelegate.h"

#include "app/BarWidgets.h"
#include "app/ImportReport.h"
#include "app/LiveSnapshot.h"
#include "app/PreviewRenderer.h"
#include "app/StatusItem.h"
#include "chrome/BarWidget.h"
#include "dock/DockBarView.h"
#include "platform/Platform.h"

#include <QPointer>

namespace moorline {

namespace {

/// Time for what the widgets show to arrive.
constexpr std::chrono::seconds previewDelay{6};

} // namespace

AppDelegate::AppDelegate(Platform &platform, RunPlan plan, Outlets outlets)
    : m_plan(std::move(plan))
    , m_outlets(std::move(outlets))
    , m_services(platform, m_plan)
    , m_windowController(
          {
              .store = m_services.store,
              .systemDock = m_services.systemDock,
              .spaceProbe = m_services.spaceProbe,
              .clock = *platform.clock,
              .screens = *platform.screens,
              .pointer = *platform.pointer,
              .windowServer = *platform.windowServer,
              .workspace = *platform.workspace,
              .panelWindow = *platform.panelWindow,
              .holds = m_services.barHolds,
              .debug = m_plan.debug,
          },
          [this](std::function<void(qreal)> contentWidthChange) { return makeBar(std::move(contentWidthChange)); })
{
}

AppDelegate::~AppDelegate() = default;

void AppDelegate::applicationDidFinishLaunching()
{
    switch (m_plan.mode) {
    case RunMode::render:
        runPreview();
        return;
    case RunMode::importDock:
        runImport();
        return;
    case RunMode::normal:
        runBar();
        return;
    }
}

void AppDelegate::runPreview()
{
    m_services.start();
    m_preview = std::make_unique<PreviewRenderer>(makeBar([](qreal) {}));
    m_pictureTimer = m_services.platform.clock->after(previewDelay, [this] {
        m_preview->render(*m_plan.previewPath);
        m_outlets.terminate();
    });
}

QCoro::Task<> AppDelegate::runImport()
{
    QPointer<AppDelegate> alive{this};
    // What the dock's tiles stand for is known only once the applications have been looked for.
    co_await m_services.platform.appBundles->installed();
    if (!alive)
        co_return;
    const DockImporter::Result result = co_await m_services.importer.importIntoSettings();
    if (!alive)
        co_return;
    for (const QString &line : importReport(result, m_services.store.settings().appShortcuts.size()))
        m_outlets.print(line);
    m_outlets.terminate();
}

void AppDelegate::runBar()
{
    m_services.start();
    m_services.badges.start();
    m_windowController.show();
    m_services.platform.statusBar->show(statusItem(m_services.store, commands()));
    if (m_plan.snapshotPath)
        scheduleSnapshot();
}

void AppDelegate::scheduleSnapshot()
{
    m_pictureTimer = LiveSnapshot::schedule(
        *m_services.platform.clock, [this] { return m_windowController.panel(); }, *m_plan.snapshotPath,
        m_outlets.terminate);
}

BarCommands AppDelegate::commands() const
{
    // There is no settings window to open yet.
    return {.openSettings = nullptr, .quit = m_outlets.terminate};
}

std::unique_ptr<DockBarView> AppDelegate::makeBar(std::function<void(qreal)> contentWidthChange)
{
    return moorline::makeBar(m_services, commands(), std::move(contentWidthChange));
}

} // namespace moorline
