#pragma once

#include "platform/Clock.h"
#include "platform/linux/apps/FolderEvents.h"

#include <QObject>
#include <QSocketNotifier>
#include <functional>
#include <memory>

namespace moorline {

/// When to read entries anew that are read on another thread: a while after something happened to them, and where it
/// happened under a reading, after that one.
class RereadSchedule final : public QObject {
    Q_OBJECT
public:
    /// Installing a program writes many files, one after the other; what happens within this is one change.
    static constexpr std::chrono::milliseconds batchTime{500};

    /// `read` begins a reading, and says so by begin(). The clock outlives this.
    RereadSchedule(Clock &clock, std::function<void()> read);

    void begin();
    /// The reading is over; `events` has what happened since, and what will.
    void end(std::shared_ptr<FolderEvents> events);
    /// Whether nothing is being read, and nothing is to be read again as far as is known.
    [[nodiscard]] bool isAtRest() const { return !m_isReading && !m_timer; }
    /// Null until a reading was over.
    [[nodiscard]] FolderEvents *events() const { return m_events.get(); }
    /// From now on these are followed.
    void follow(std::shared_ptr<FolderEvents> events);

private:
    void noteNews();

    Clock &m_clock;
    std::function<void()> m_read;
    bool m_isReading = false;
    /// Something happened under the reading.
    bool m_isOutdated = false;
    std::shared_ptr<FolderEvents> m_events;
    std::unique_ptr<QSocketNotifier> m_notifier;
    std::unique_ptr<Clock::Timer> m_timer;
};

} // namespace moorline
