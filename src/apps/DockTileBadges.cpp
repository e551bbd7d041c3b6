#include "apps/DockTileBadges.h"

#include "apps/DockTiles.h"
#include "platform/Accessibility.h"
#include "platform/Platform.h"
#include "platform/Workspace.h"
#include "support/Promise.h"

#include <QThread>
#include <algorithm>

namespace moorline {

namespace {

using Tiles = QList<BadgeTile>;
using Wanted = std::shared_ptr<std::atomic_bool>;

std::optional<qint64> dockProcess(const Workspace &workspace)
{
    const auto running = workspace.runningApplications().value_or(QList<RunningApplication>());
    const auto dock = std::find_if(running.begin(), running.end(), [](const RunningApplication &application) {
        return application.bundleIdentifier == QLatin1StringView("com.apple.dock") && !application.isTerminated;
    });
    return dock == running.end() ? std::nullopt : dock->process;
}

/// A thread of its own, as a dock that hangs would keep one of a pool for long.
QCoro::Task<Tiles> readAside(std::shared_ptr<AccessibilityElement> dock, Wanted isWanted)
{
    const Promise<Tiles> read;
    QThread *thread = QThread::create([dock = std::move(dock), isWanted = std::move(isWanted), read]() mutable {
        soon([read, tiles = scanDockTiles(*dock, *isWanted)] { read.resolve(tiles); });
    });
    QObject::connect(thread, &QThread::finished, thread, &QObject::deleteLater);
    thread->start(QThread::LowPriority);
    co_return co_await read;
}

} // namespace

DockTileBadges::DockTileBadges(const Workspace &workspace, const Accessibility &accessibility)
    : m_workspace(workspace)
    , m_accessibility(accessibility)
{
}

DockTileBadges::~DockTileBadges()
{
    *m_isWanted = false;
}

void DockTileBadges::setActive(bool active)
{
    *m_isWanted = false;
    if (active)
        m_isWanted = std::make_shared<std::atomic_bool>(true);
}

bool DockTileBadges::isPermitted() const
{
    return m_accessibility.isProcessTrusted();
}

QCoro::Task<Tiles> DockTileBadges::tiles()
{
    const auto process = dockProcess(m_workspace);
    if (!process)
        co_return {};
    auto dock = m_accessibility.application(*process);
    dock->setMessagingTimeout(messagingTimeout);
    auto reading = readAside(std::move(dock), m_isWanted);
    co_return co_await std::move(reading);
}

} // namespace moorline
