#include "platform/linux/players/MprisPlayer.h"

#include "platform/linux/bus/Bus.h"
#include "platform/linux/bus/PendingBusCall.h"
#include "platform/linux/bus/PlainValues.h"

#include <QLoggingCategory>
#include <QPointer>
#include <utility>

namespace moorline {

namespace {

Q_LOGGING_CATEGORY(logPlayers, "moorline.players", QtInfoMsg)

const QString objectPath = QStringLiteral("/org/mpris/MediaPlayer2");
const QString rootInterface = QStringLiteral("org.mpris.MediaPlayer2");
const QString playerInterface = QStringLiteral("org.mpris.MediaPlayer2.Player");
const QString propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");

} // namespace

MprisPlayer::MprisPlayer(Bus &bus, Clock &clock, const QString &owner)
    : m_bus(bus)
    , m_clock(clock)
    , m_owner(owner)
    , m_changes(bus, owner, {objectPath, propertiesInterface, QStringLiteral("PropertiesChanged")},
          [this](const QDBusMessage &message) { noteChange(message); })
    , m_seeks(bus, owner, {objectPath, playerInterface, QStringLiteral("Seeked")},
          [this](const QDBusMessage &message) { noteSeek(message); })
{
    refresh(MprisReading::trustTime);
    findProcess();
}

void MprisPlayer::refresh(std::chrono::milliseconds trust)
{
    if (m_identityReading.isDue(m_identity.has_value(), std::nullopt, m_clock.uptime()))
        readIdentity();
    if (m_reading.isDue(m_properties.has_value(), trust, m_clock.uptime()))
        read();
}

QCoro::Task<std::optional<double>> MprisPlayer::position()
{
    if (m_position.isSilent() && m_properties)
        co_return corrected(m_position.lastTold(trackDigest(m_owner, *m_properties)));
    const QPointer<MprisPlayer> alive(this);
    auto asked = propertyQuestion(m_owner, objectPath, playerInterface, QStringLiteral("Position"));
    asked.setAutoStartService(false);
    const BusAnswer answer = co_await ask(*this, m_bus, m_clock, asked, answerLimit);
    if (!alive)
        co_return std::nullopt;
    if (isMprisSilence(answer.errorName())) {
        qCDebug(logPlayers) << m_owner << "does not say where it is" << answer.errorName();
        m_position.noteSilence();
        m_properties.reset();
    }
    if (!m_properties)
        co_return std::nullopt;
    const QVariant told = answer.value<QDBusVariant>().value_or(QDBusVariant()).variant();
    co_return corrected(mprisPosition(told, m_properties->duration));
}

double MprisPlayer::corrected(double told)
{
    const MprisPosition::Told all{.isPlaying = m_properties->status == MprisProperties::Status::playing,
        .track = trackDigest(m_owner, *m_properties),
        .position = told,
        .duration = m_properties->duration};
    return m_position.correct(all, m_clock.uptime());
}

void MprisPlayer::command(const QString &method)
{
    m_reading.distrust();
    m_bus.connection().send(call(playerInterface, method));
}

void MprisPlayer::raise() const
{
    m_bus.connection().send(call(rootInterface, QStringLiteral("Raise")));
}

void MprisPlayer::noteChange(const QDBusMessage &message)
{
    const QVariant interface = message.arguments().value(0);
    if (interface == playerInterface) {
        m_position.noteChange();
        gather(m_reading.noteChange(m_clock.uptime()));
    } else if (interface == rootInterface) {
        gatherIdentity(m_identityReading.noteChange(m_clock.uptime()));
    }
}

void MprisPlayer::noteSeek(const QDBusMessage &message)
{
    m_isSought = true;
    const double duration = m_properties ? m_properties->duration : 0;
    m_position.seek(mprisPosition(message.arguments().value(0), duration), m_clock.uptime());
    m_position.noteChange();
    gather(m_reading.noteChange(m_clock.uptime()));
}

void MprisPlayer::gather(const std::optional<std::chrono::milliseconds> &wait)
{
    if (wait)
        m_gathering = m_clock.after(*wait, [this] { read(); });
}

void MprisPlayer::gatherIdentity(const std::optional<std::chrono::milliseconds> &wait)
{
    if (wait)
        m_gatheringIdentity = m_clock.after(*wait, [this] { readIdentity(); });
}

QCoro::Task<> MprisPlayer::read()
{
    const QPointer<MprisPlayer> alive(this);
    m_gathering.reset();
    m_reading.begin(m_clock.uptime());
    const BusAnswer answer = co_await ask(*this, m_bus, m_clock, question(playerInterface), answerLimit);
    if (!alive)
        co_return;
    const auto wait = m_reading.end(m_clock.uptime());
    // A change that it told of while it was asked counts after a silence that began meanwhile.
    if (wait)
        m_position.noteChange();
    gather(wait);
    take(answer, std::exchange(m_isSought, false));
}

QCoro::Task<> MprisPlayer::readIdentity()
{
    const QPointer<MprisPlayer> alive(this);
    m_gatheringIdentity.reset();
    m_identityReading.begin(m_clock.uptime());
    const BusAnswer answer = co_await ask(*this, m_bus, m_clock, question(rootInterface), answerLimit);
    if (!alive)
        co_return;
    gatherIdentity(m_identityReading.end(m_clock.uptime()));
    const auto values = answer.value<QVariantMap>();
    if (!values)
        co_return;
    const auto before = std::exchange(m_identity, mprisIdentity(plainValues(*values)));
    if (m_identity != before)
        Q_EMIT changed();
}

QCoro::Task<> MprisPlayer::findProcess()
{
    const QPointer<MprisPlayer> alive(this);
    auto asked = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetConnectionUnixProcessID"));
    asked << m_owner;
    // The bus itself answers.
    const BusAnswer answer = co_await ask(*this, m_bus, m_clock, asked, answerLimit);
    const auto process = answer.value<uint>();
    if (!alive || !process)
        co_return;
    m_process = *process;
    Q_EMIT changed();
}

void MprisPlayer::take(const BusAnswer &answer, bool isSought)
{
    const auto values = answer.value<QVariantMap>();
    if (!values)
        qCDebug(logPlayers) << m_owner << "does not say what it plays" << answer.errorName();
    auto told = values ? mprisProperties(plainValues(*values), m_properties) : std::nullopt;
    const bool isOther = told != m_properties;
    m_properties = std::move(told);
    if (isOther || isSought)
        Q_EMIT changed();
}

QDBusMessage MprisPlayer::call(const QString &interface, const QString &method) const
{
    auto message = QDBusMessage::createMethodCall(m_owner, objectPath, interface, method);
    message.setAutoStartService(false);
    return message;
}

QDBusMessage MprisPlayer::question(const QString &interface) const
{
    auto message = call(propertiesInterface, QStringLiteral("GetAll"));
    message << interface;
    return message;
}

} // namespace moorline
