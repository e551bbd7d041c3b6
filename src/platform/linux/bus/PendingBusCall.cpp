#include "platform/linux/bus/PendingBusCall.h"

#include "platform/linux/bus/Bus.h"

#include <QDBusPendingCallWatcher>

namespace moorline {

namespace {

using namespace std::chrono_literals;

const QString disconnected = QStringLiteral("org.freedesktop.DBus.Error.Disconnected");
const QString noReply = QStringLiteral("org.freedesktop.DBus.Error.NoReply");

/// The limit is the clock's; that of the bus only clears away what nobody waits for any more.
int limitOfBus(std::chrono::milliseconds limit)
{
    return int((limit + 1s).count());
}

/// One call under way. It ends itself with the first thing that ends it.
class PendingBusCall final : public QObject {
public:
    PendingBusCall(
        const QObject &owner, Bus &bus, Clock &clock, const QDBusMessage &question, std::chrono::milliseconds limit)
        : QObject(&bus)
        , m_watcher(bus.connection().asyncCall(question, limitOfBus(limit)))
        , m_limit(clock.after(limit, [this] { conclude(BusAnswer::failure(noReply)); }))
    {
        connect(
            &m_watcher, &QDBusPendingCallWatcher::finished, this, [this] { conclude(BusAnswer(m_watcher.reply())); });
        connect(&bus, &Bus::stateChanged, this, [this] { conclude(BusAnswer::failure(disconnected)); });
        connect(&owner, &QObject::destroyed, this, [this] { conclude(BusAnswer::failure(disconnected)); });
    }

    ~PendingBusCall() override { m_answer.resolve(BusAnswer::failure(disconnected)); }

    [[nodiscard]] const Promise<BusAnswer> &answer() const { return m_answer; }

private:
    void conclude(const BusAnswer &answer)
    {
        m_limit.reset();
        m_watcher.disconnect(this);
        deleteLater();
        // By a copy: whoever goes on may take the bus away.
        const Promise<BusAnswer> promise = m_answer;
        promise.resolve(answer);
    }

    QDBusPendingCallWatcher m_watcher;
    std::unique_ptr<Clock::Timer> m_limit;
    Promise<BusAnswer> m_answer;
};

} // namespace

Promise<BusAnswer> ask(
    const QObject &owner, Bus &bus, Clock &clock, const QDBusMessage &question, std::chrono::milliseconds limit)
{
    if (bus.isOpen())
        return (new PendingBusCall(owner, bus, clock, question, limit))->answer();
    Promise<BusAnswer> answer;
    answer.resolve(BusAnswer::failure(disconnected));
    return answer;
}

QDBusMessage propertyQuestion(
    const QString &service, const QString &path, const QString &interface, const QString &property)
{
    auto question = QDBusMessage::createMethodCall(
        service, path, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    return question << interface << property;
}

} // namespace moorline
