#pragma once

#include <QDBusConnection>
#include <QObject>

namespace moorline {

/// The session's or the machine's bus, as far as it is there: it comes when it has been opened, for which nobody waits,
/// goes when it ends, and may come again. A BusKeeper opens it.
class Bus final : public QObject {
    Q_OBJECT
public:
    enum class State {
        /// Nobody knows yet whether there is one.
        awaited,
        open,
        /// There is none, or none any more.
        absent,
    };

    explicit Bus(QObject *parent = nullptr);

    [[nodiscard]] State state() const { return m_state; }
    [[nodiscard]] bool isOpen() const { return m_state == State::open; }
    /// Not connected unless the bus is open. Not to be kept: another one takes its place when the bus comes again.
    [[nodiscard]] const QDBusConnection &connection() const { return m_connection; }

    /// Takes the place of the connection before. There is no bus when it is not connected.
    void adopt(const QDBusConnection &connection);

Q_SIGNALS:
    /// After each adopt(), and when the bus ends.
    void stateChanged();

private Q_SLOTS:
    void end();

private:
    QDBusConnection m_connection;
    State m_state = State::awaited;
};

} // namespace moorline
