#pragma once

#include "platform/Clock.h"

#include <QObject>

namespace moorline {

/// Publishes the current time to whatever draws it, twice a second.
class TimeKeeper final : public QObject {
    Q_OBJECT
public:
    explicit TimeKeeper(Clock &clock, QObject *parent = nullptr);

    /// Begins ticking. The tick is not aligned to the second, so a clock is at most half a second late.
    void start();

    [[nodiscard]] QDateTime now() const { return m_now; }

Q_SIGNALS:
    void nowChanged();

private:
    void tick();

    Clock &m_clock;
    QDateTime m_now;
    std::unique_ptr<Clock::Timer> m_timer;
};

} // namespace moorline
