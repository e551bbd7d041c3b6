#pragma once

#include <QDBusMessage>
#include <QObject>
#include <functional>

namespace moorline {

class Bus;
class FollowedName;

/// A signal on a bus. An empty path stands for any.
struct BusSignalAddress {
    QString path;
    QString interface;
    QString member;
};

/// Hears one signal as long as it lives and the bus is there, and again on a bus that comes again. What the signal
/// carries is for the hearer to check, with onlyValue() for a single value.
class BusSignal final : public QObject {
    Q_OBJECT
public:
    using Hearer = std::function<void(const QDBusMessage &)>;

    /// From the owner of that name and from nobody else. `sender` outlives it.
    BusSignal(const FollowedName &sender, BusSignalAddress address, Hearer hearer);
    /// From that one connection, by its unique name, or from anybody where the name is empty. `bus` outlives it.
    BusSignal(Bus &bus, const QString &uniqueName, BusSignalAddress address, Hearer hearer);

private Q_SLOTS:
    void hear(const QDBusMessage &message);

private:
    void subscribe();

    Bus &m_bus;
    const FollowedName *m_sender = nullptr;
    QString m_uniqueName;
    BusSignalAddress m_address;
    Hearer m_hearer;
};

} // namespace moorline
