#include "platform/linux/bus/BusSignal.h"

#include "platform/linux/bus/FollowedName.h"

namespace moorline {

BusSignal::BusSignal(const FollowedName &sender, BusSignalAddress address, Hearer hearer)
    : BusSignal(sender.bus(), QString(), std::move(address), std::move(hearer))
{
    m_sender = &sender;
}

BusSignal::BusSignal(Bus &bus, const QString &uniqueName, BusSignalAddress address, Hearer hearer)
    : m_bus(bus)
    , m_uniqueName(uniqueName)
    , m_address(std::move(address))
    , m_hearer(std::move(hearer))
{
    connect(&bus, &Bus::stateChanged, this, &BusSignal::subscribe);
    subscribe();
}

void BusSignal::subscribe()
{
    if (!m_bus.isOpen())
        return;
    QDBusConnection connection = m_bus.connection();
    // Never with a well-known name: Qt asks the bus who that is and waits for the answer.
    connection.connect(
        m_uniqueName, m_address.path, m_address.interface, m_address.member, this, SLOT(hear(QDBusMessage)));
}

void BusSignal::hear(const QDBusMessage &message)
{
    const bool isFromSender = !m_sender || (!m_sender->owner().isEmpty() && message.service() == m_sender->owner());
    if (isFromSender)
        m_hearer(message);
}

} // namespace moorline
