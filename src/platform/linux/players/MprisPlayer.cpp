#include "platform/linux/players/MprisPlayer.h"

#include "platform/linux/bus/Bus.h"
#include "platform/linux/bus/PendingBusCall.h"
#include "platform/linux/bus/PlainValues.h"

#include <QLoggingCategory>
#include <QPointer>
#include <algorithm>
#include <utility>

namespace moorline {

namespace {

Q_LOGGING_CATEGORY(logPlayers, "moorline.players", QtInfoMsg)

const QString objectPath = QStringLiteral("/org/mpris/MediaPlayer2");
const QString rootInterface = QStringLiteral("org.mpris.MediaPlayer2");
const QString playerInterface = QStringLiteral("org.mpris.MediaPlayer2.Player");
const QString propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");

/// Whether an answer says that nobody is there, or that nobody answers, rather than what a player says.
bool isSilence(const BusAnswer &answer)
{
    constexpr QLatin1StringView prefix("org.freedesktop.DBus.Error.");
    const QString error = answer.errorName();
    return error.startsWith(prefix)
        && QStringList{QStringLiteral("NoReply"), QStringLiteral("Disconnected"), QStringLiteral("ServiceUnknown"),
            QStringLiteral("NameHasNoOwner")}
               .contains(error.sliced(prefix.size()));
}

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
    refresh(trustTime);
    findProcess();
}

void MprisPlayer::refresh(std::chrono::milliseconds trust)
{
    if (!m_identity && !m_isReadingIdentity && !m_gatheringIdentity)
        readIdentity();
    const bool isKnown = m_properties && m_readAt && m_clock.uptime() - *m_readAt < trust;
    if (!isKnown && !m_isReading && !m_gathering)
        read();
}

QCoro::Task<std::optional<double>> MprisPlayer::position()
{
    if (m_isPositionSilent && m_properties)
        co_return corrected(m_position.lastTold());
    const QPointer<MprisPlayer> alive(this);
    auto asked = propertyQuestion(m_owner, objectPath, playerInterface, QStringLiteral("Position"));
    asked.setAutoStartService(false);
    const BusAnswer answer = co_await ask(*this, m_bus, m_clock, asked, answerLimit);
    if (!alive)
        co_return std::nullopt;
    if (isSilence(answer)) {
        qCDebug(logPlayers) << m_owner << "does not say where it is" << answer.errorName();
        m_isPositionSilent = true;
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
    m_readAt.reset();
    m_bus.connection().send(call(playerInterface, method));
}

void MprisPlayer::raise() const
{
    m_bus.connection().send(call(rootInterface, QStringLiteral("Raise")));
}

void MprisPlayer::noteChange(const QDBusMessage &message)
{
    const QVariant interface = message.arguments().value(0);
    if (interface == playerInterface)
        gather();
    else if (interface == rootInterface)
        gatherIdentity();
}

void MprisPlayer::noteSeek(const QDBusMessage &message)
{
    m_isSought = true;
    const double duration = m_properties ? m_properties->duration : 0;
    m_position.seek(mprisPosition(message.arguments().value(0), duration), m_clock.uptime());
    gather();
}

void MprisPlayer::gather()
{
    m_hasNews = true;
    m_isPositionSilent = false;
    // What is being asked may have been answered before the change.
    if (m_gathering || m_isReading)
        return;
    const bool isAtItAgain = m_heardAt && m_clock.uptime() - *m_heardAt < m_patience;
    m_patience = isAtItAgain ? std::min(2 * m_patience, longestGathering) : gatheringTime;
    m_gathering = m_clock.after(m_patience, [this] {
        m_gathering.reset();
        m_heardAt = m_clock.uptime();
        read();
    });
}

void MprisPlayer::gatherIdentity()
{
    m_hasIdentityNews = true;
    if (m_gatheringIdentity || m_isReadingIdentity)
        return;
    m_gatheringIdentity = m_clock.after(gatheringTime, [this] {
        m_gatheringIdentity.reset();
        readIdentity();
    });
}

QCoro::Task<> MprisPlayer::read()
{
    const QPointer<MprisPlayer> alive(this);
    m_isReading = true;
    m_hasNews = false;
    const BusAnswer answer = co_await ask(*this, m_bus, m_clock, question(playerInterface), answerLimit);
    if (!alive)
        co_return;
    m_isReading = false;
    m_readAt = m_clock.uptime();
    const bool isSought = std::exchange(m_isSought, false);
    if (m_hasNews)
        gather();
    take(answer, isSought);
}

QCoro::Task<> MprisPlayer::readIdentity()
{
    const QPointer<MprisPlayer> alive(this);
    m_isReadingIdentity = true;
    m_hasIdentityNews = false;
    const BusAnswer answer = co_await ask(*this, m_bus, m_clock, question(rootInterface), answerLimit);
    if (!alive)
        co_return;
    m_isReadingIdentity = false;
    if (m_hasIdentityNews)
        gatherIdentity();
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
