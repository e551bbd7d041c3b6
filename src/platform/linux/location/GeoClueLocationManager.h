#pragma once

#include "platform/linux/location/GeoClueSession.h"

namespace moorline {

/// GeoClue2 on the system bus. It is asked only when somebody asks for permission or for a position, and let go of
/// after the first position.
///
/// didChangeAuthorization() comes when the answer is another one than before, and only then: a question that GeoClue
/// leaves open changes nothing and may be asked again. A permission holds on when GeoClue ends by itself, as it does
/// when nobody needs it. A refusal is forgotten when GeoClue starts anew, and when it can tell places again or more
/// exactly than before: the user may have thought otherwise since, an agent may have come, location be switched on.
class GeoClueLocationManager final : public LocationManager {
    Q_OBJECT
public:
    /// `desktopId` is the name of this program's desktop entry without ".desktop"; GeoClue and its agents decide by it.
    GeoClueLocationManager(Bus &systemBus, Clock &clock, const QString &desktopId);
    ~GeoClueLocationManager() override;

    [[nodiscard]] bool locationServicesEnabled() const override;
    [[nodiscard]] LocationAuthorization authorizationStatus() const override;
    [[nodiscard]] std::optional<PositionFix> location() const override { return m_location; }

    [[nodiscard]] bool asksOnce() const override { return false; }
    void setDesiredAccuracy(LocationAccuracy accuracy) override { m_accuracy = accuracy; }
    void requestWhenInUseAuthorization() override;
    /// Answered once, by didUpdateLocations() or didFail(), however many ask before that.
    void requestLocation() override;

private:
    void noteBus();
    void ensureSession();
    void endSession();
    void refused(GeoClueCondition why);
    void decided(GeoClueCondition condition);
    void finished(const std::optional<PositionFix> &fix);
    void noteOwner(const QString &now);
    void noteProperties(const QDBusMessage &message);
    void forgetRefusal();
    void setCondition(GeoClueCondition condition);

    Bus &m_bus;
    Clock &m_clock;
    QString m_desktopId;
    FollowedName m_geoClue;
    BusSignal m_properties;
    LocationAccuracy m_accuracy = LocationAccuracy::town;
    GeoClueCondition m_condition = GeoClueCondition::notAsked;
    std::optional<PositionFix> m_location;
    bool m_isPermissionWanted = false;
    bool m_isLocationWanted = false;
    std::unique_ptr<GeoClueSession> m_session;
};

} // namespace moorline
