#include "MprisDouble.h"

#include <QCoreApplication>
#include <QDBusObjectPath>
#include <QDBusVariant>

namespace moorline::test {

namespace {

const QString objectPath = QStringLiteral("/org/mpris/MediaPlayer2");
const QString playerInterface = QStringLiteral("org.mpris.MediaPlayer2.Player");

/// What a call is told of as.
QString described(const QDBusMessage &message)
{
    const QVariantList arguments = message.arguments();
    if (message.member() == QLatin1StringView("Get"))
        return QStringLiteral("Get ") + arguments.value(1).toString();
    if (message.member() != QLatin1StringView("GetAll"))
        return message.member();
    return arguments.value(0) == playerInterface ? QStringLiteral("GetAll Player") : QStringLiteral("GetAll root");
}

} // namespace

MprisDouble::MprisDouble(const QByteArray &busAddress, const QString &name)
    : root{{QStringLiteral("Identity"), QStringLiteral("A player")}}
{
    static int generation = 0;
    m_connectionName = QStringLiteral("player%1").arg(++generation);
    QDBusConnection::connectToBus(QString::fromLocal8Bit(busAddress), m_connectionName);
    connection().registerVirtualObject(objectPath, this);
    setStatus(QStringLiteral("Playing"));
    setTrack(QStringLiteral("mpris:trackid"), QVariant::fromValue(QDBusObjectPath(QStringLiteral("/track/1"))));
    setTrack(QStringLiteral("xesam:title"), QStringLiteral("A song"));
    static_cast<void>(takeName(name));
}

MprisDouble::~MprisDouble()
{
    quit();
}

QString MprisDouble::fullName(const QString &name)
{
    return QStringLiteral("org.mpris.MediaPlayer2.") + name;
}

QString MprisDouble::owner() const
{
    return connection().baseService();
}

bool MprisDouble::takeName(const QString &name) const
{
    return connection().registerService(fullName(name));
}

void MprisDouble::quit()
{
    m_held.clear();
    if (m_connectionName.isEmpty())
        return;
    // Calls that were not delivered yet are refused by Qt, which needs the connection for it.
    connection().unregisterObject(objectPath);
    QCoreApplication::removePostedEvents(this);
    QDBusConnection::disconnectFromBus(std::exchange(m_connectionName, {}));
}

void MprisDouble::setTrack(const QString &key, const QVariant &value)
{
    m_track.insert(key, value);
    player.insert(QStringLiteral("Metadata"), m_track);
}

void MprisDouble::setStatus(const QString &status)
{
    player.insert(QStringLiteral("PlaybackStatus"), status);
}

void MprisDouble::tellChange(const QString &property, bool isInvalidated)
{
    const QVariantMap changed = isInvalidated ? QVariantMap() : QVariantMap{{property, player.value(property)}};
    const QStringList invalidated = isInvalidated ? QStringList{property} : QStringList();
    tell(QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("PropertiesChanged"),
        {playerInterface, changed, invalidated});
}

void MprisDouble::tellSeek(qint64 microseconds)
{
    tell(playerInterface, QStringLiteral("Seeked"), {microseconds});
}

void MprisDouble::tell(const QString &interface, const QString &member, const QVariantList &arguments) const
{
    auto message = QDBusMessage::createSignal(objectPath, interface, member);
    message.setArguments(arguments);
    connection().send(message);
}

void MprisDouble::start()
{
    setStatus(QStringLiteral("Playing"));
    tellChange(QStringLiteral("PlaybackStatus"));
}

void MprisDouble::pause()
{
    setStatus(QStringLiteral("Paused"));
    tellChange(QStringLiteral("PlaybackStatus"));
}

void MprisDouble::hold(const QString &call)
{
    m_held.insert(call, {});
}

void MprisDouble::release(const QString &call)
{
    const QList<QDBusMessage> held = m_held.take(call);
    for (const QDBusMessage &message : held)
        connection().send(message.createReply(usualAnswer(call)));
}

void MprisDouble::fail(const QString &call, const QString &error)
{
    m_errors.insert(call, error);
}

void MprisDouble::answerWith(const QString &call, const QVariantList &values)
{
    m_answers.insert(call, values);
}

bool MprisDouble::handleMessage(const QDBusMessage &message, const QDBusConnection &from)
{
    const QString call = described(message);
    if (call == flush)
        return from.send(message.createReply());
    m_calls.append(call);
    if (const auto held = m_held.find(call); held != m_held.end()) {
        message.setDelayedReply(true);
        held->append(message);
        return true;
    }
    if (m_errors.contains(call))
        return from.send(message.createErrorReply(m_errors.value(call), QStringLiteral("as told")));
    if (!message.isReplyRequired())
        return true;
    return from.send(message.createReply(m_answers.value(call, usualAnswer(call))));
}

QVariantList MprisDouble::usualAnswer(const QString &call) const
{
    if (call == QLatin1StringView("GetAll Player"))
        return {player};
    if (call == QLatin1StringView("GetAll root"))
        return {root};
    if (call == QLatin1StringView("Get Position"))
        return {QVariant::fromValue(QDBusVariant(position))};
    return {};
}

QString MprisDouble::introspect(const QString &) const
{
    return {};
}

} // namespace moorline::test
