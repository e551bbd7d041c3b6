#pragma once

#include "platform/Clock.h"

#include <QElapsedTimer>

namespace moorline {

/// The real clock, with the event loop's own timers. They run on during menus and drags on every system.
class QtClock final : public Clock {
public:
    QtClock();

    [[nodiscard]] QDateTime now() const override;
    [[nodiscard]] std::chrono::milliseconds uptime() const override;
    [[nodiscard]] std::unique_ptr<Timer> every(std::chrono::milliseconds interval, Callback tick) override;
    [[nodiscard]] std::unique_ptr<Timer> after(std::chrono::milliseconds delay, Callback fire) override;

private:
    QElapsedTimer m_uptime;
};

} // namespace moorline
