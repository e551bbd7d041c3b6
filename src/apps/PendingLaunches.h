#pragma once

#include "platform/Clock.h"

#include <QHash>
#include <QObject>
#include <QString>
#include <optional>

namespace moorline {

class Workspace;

/// Applications that were started and show no window yet, so that an impatient second click does not start them twice.
class PendingLaunches final : public QObject {
    Q_OBJECT
public:
    /// How long a start may take before it counts as failed in silence.
    static constexpr std::chrono::seconds patience{10};

    /// What is lent here outlives the launches.
    PendingLaunches(const Workspace &workspace, const Clock &clock);

    /// Notes that an application is about to be started. False when it is being started already.
    [[nodiscard]] bool begin(const QString &path, const std::optional<QString> &identifier);
    /// What was started from `path` will not show up any more.
    void end(const QString &path);

private:
    struct Launch {
        std::optional<QString> identifier;
        std::chrono::milliseconds deadline;
    };

    void endThoseThatRun();
    [[nodiscard]] bool isUnderWay(const QString &path, const std::optional<QString> &identifier) const;

    const Workspace &m_workspace;
    const Clock &m_clock;
    /// By path.
    QHash<QString, Launch> m_launches;
};

} // namespace moorline
