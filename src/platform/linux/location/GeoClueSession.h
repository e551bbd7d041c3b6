#pragma once

#include "platform/Clock.h"
#include "platform/linux/location/GeoClueConditions.h"

#include <QDBusConnection>
#include <QDBusObjectPath>

class QDBusMessage;
class QDBusPendingCallWatcher;

namespace moorline {

/// One conversation with GeoClue: it is asked for permission and, once that is given, for one position. Over at the
/// first position, at a refusal, or when it takes too long; GeoClue is let go of at once, so that it tracks no further.
class GeoClueSession final : public QObject {
    Q_OBJECT
public:
    GeoClueSession(const QDBusConnection &bus, Clock &clock, const QString &desktopId);
    /// Lets go of GeoClue. None of the signals comes any more.
    ~GeoClueSession() override;

    void begin();
    /// To be told when that owner of the service's name is gone.
    void ownerLeft(const QString &uniqueName);

Q_SIGNALS:
    /// A position may follow.
    void granted();
    /// Over before permission was given.
    void refused(moorline::GeoClueCondition why);
    /// Over, with a position or without one.
    void finished(const std::optional<moorline::PositionFix> &fix);

private Q_SLOTS:
    void locationUpdated(const QDBusObjectPath &before, const QDBusObjectPath &now);

private:
    using Continuation = void (GeoClueSession::*)(const QDBusMessage &reply);

    void ask(const QDBusMessage &message, Continuation then);
    void answered(const QDBusMessage &reply, Continuation then);
    void limit(std::chrono::milliseconds duration);
    void timedOut();

    void adoptClient(const QDBusMessage &reply);
    void describeAccuracy(const QDBusMessage &reply);
    void startClient(const QDBusMessage &reply);
    void clientStarted(const QDBusMessage &reply);
    void readLocation();
    void locationRead(const QDBusMessage &reply);

    void refuse(GeoClueCondition why);
    void finish(const std::optional<PositionFix> &fix);
    void close();
    void letGo();

    [[nodiscard]] QDBusMessage clientCall(const QString &method) const;
    [[nodiscard]] QDBusMessage clientProperty(const QString &name, const QVariant &value) const;

    QDBusConnection m_bus;
    Clock &m_clock;
    QString m_desktopId;
    GeoClueStep m_step = GeoClueStep::findingService;
    /// The unique name of the process that gave the client: another that takes its place does not know the client.
    QString m_service;
    QString m_client;
    QString m_location;
    /// The call whose answer counts.
    QDBusPendingCallWatcher *m_call = nullptr;
    std::unique_ptr<Clock::Timer> m_limit;
};

} // namespace moorline
