#pragma once

#include "platform/Clock.h"

#include <QObject>
#include <functional>

namespace moorline {

class BusKeeper;

/// Holds back what cannot begin before it is known whether a bus answers. Nobody waits in it: it calls back.
class BusGate final : public QObject {
    Q_OBJECT
public:
    /// How long a bus has to answer before the program does without it. It answers in milliseconds.
    static constexpr std::chrono::milliseconds patience{1000};

    /// Has the keeper open its bus. Both outlive it.
    BusGate(BusKeeper &keeper, Clock &clock);

    /// Calls back once, from the event loop, and says whether the bus answered in time.
    void whenKnown(std::function<void(bool answers)> begin);

private:
    void decide(bool answers);
    void open();

    std::unique_ptr<Clock::Timer> m_patience;
    std::optional<bool> m_answers;
    std::function<void(bool)> m_begin;
};

} // namespace moorline
