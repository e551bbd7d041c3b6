#pragma once

#include "platform/BadgeSource.h"

#include <atomic>
#include <memory>

namespace moorline {

class Accessibility;
class Workspace;

/// The badges that the system's dock shows, read from what it tells to assistive programs.
class DockTileBadges final : public BadgeSource {
    Q_OBJECT
public:
    /// How long each question to the dock may take.
    static constexpr std::chrono::milliseconds messagingTimeout{1000};

    /// What is lent here outlives the source.
    DockTileBadges(const Workspace &workspace, const Accessibility &accessibility);
    ~DockTileBadges() override;

    void setActive(bool active) override;
    [[nodiscard]] bool isPermitted() const override;
    /// None when the dock does not run. Ends early when nobody wants to know any more.
    [[nodiscard]] QCoro::Task<QList<BadgeTile>> tiles() override;

private:
    const Workspace &m_workspace;
    const Accessibility &m_accessibility;
    /// Shared with the threads that read.
    std::shared_ptr<std::atomic_bool> m_isWanted = std::make_shared<std::atomic_bool>(false);
};

} // namespace moorline
