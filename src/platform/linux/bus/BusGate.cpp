#include "platform/linux/bus/BusGate.h"

#include "platform/linux/bus/BusKeeper.h"

#include <utility>

namespace moorline {

BusGate::BusGate(BusKeeper &keeper, Clock &clock)
    : m_patience(clock.after(patience, [this] { decide(false); }))
{
    connect(&keeper, &BusKeeper::answered, this, &BusGate::decide);
    keeper.open();
}

void BusGate::whenKnown(std::function<void(bool answers)> begin)
{
    m_begin = std::move(begin);
    if (m_answers)
        QMetaObject::invokeMethod(this, &BusGate::open, Qt::QueuedConnection);
}

/// What comes later than the patience lasts changes nothing any more.
void BusGate::decide(bool answers)
{
    if (m_answers)
        return;
    m_answers = answers;
    m_patience.reset();
    open();
}

void BusGate::open()
{
    if (const auto begin = std::exchange(m_begin, nullptr))
        begin(*m_answers);
}

} // namespace moorline
