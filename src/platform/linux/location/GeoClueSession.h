#pragma once

#include "platform/Clock.h"
#include "platform/linux/bus/BusSignal.h"
#include "platform/linux/bus/FollowedName.h"
#include "platform/linux/location/GeoClueConditions.h"

namespace moorline {

class BusAnswer;

/// One conversation with GeoClue: it is asked for permission and, once that is given, for one position. Over at the
/// first position, at a refusal, or when it takes too long; GeoClue is let go of at once, so that it tracks no further.
class GeoClueSession final : public QObject {
    Q_OBJECT
public:
    /// What GeoClue is told of this program. Its agents decide by the name of the desktop entry, without ".desktop".
    struct Introduction {
        QString desktopId;
        /// A GClueAccuracyLevel.
        uint accuracyLevel;
    };

    /// `geoClue` is its name on the bus. Both outlive the session.
    GeoClueSession(FollowedName &geoClue, Clock &clock, Introduction introduction);
    /// Lets go of GeoClue. None of the signals comes any more.
    ~GeoClueSession() override;

    void begin();

Q_SIGNALS:
    /// A position may follow.
    void granted();
    /// Over before permission was given.
    void refused(moorline::GeoClueCondition why);
    /// Over, with a position or without one.
    void finished(const std::optional<moorline::PositionFix> &fix);

private:
    QCoro::Task<> askForPermission();
    QCoro::Task<> readLocation();
    /// False when this was the end of the session, or the session has ended meanwhile.
    [[nodiscard]] bool goesOn(const BusAnswer &answer);
    [[nodiscard]] bool adoptClient(const BusAnswer &answer);
    void noteOwner(const QString &before);
    void noteLocation(const QDBusMessage &message);
    void waitForLocation();

    void refuse(GeoClueCondition why);
    void finish(const std::optional<PositionFix> &fix);
    void close();
    void letGo();

    [[nodiscard]] QDBusMessage clientCall(const QString &method) const;
    [[nodiscard]] QDBusMessage clientProperty(const QString &name, const QVariant &value) const;

    FollowedName &m_geoClue;
    Clock &m_clock;
    Introduction m_introduction;
    GeoClueStep m_step = GeoClueStep::findingService;
    /// The unique name of the process that gave the client: another that takes its place does not know the client.
    QString m_service;
    QString m_client;
    QString m_location;
    std::unique_ptr<BusSignal> m_locationUpdated;
    /// For a position.
    std::unique_ptr<Clock::Timer> m_limit;
};

} // namespace moorline
