#pragma once

#include "platform/Clock.h"
#include "platform/LocationManager.h"
#include "settings/Settings.h"
#include "support/Promise.h"

#include <QPointer>

namespace moorline {

class Geocoder;
struct Placemark;

/// Whether the machine's location may be used, and on demand where that is: one coarse fix with a name, never a track.
class LocationService final : public QObject {
    Q_OBJECT
public:
    enum class Availability { notDetermined, authorized, denied, restricted, servicesOff };

    /// A known position younger than this is as good as a new one.
    static constexpr std::chrono::seconds freshness{300};
    /// How long a place waits for its name.
    static constexpr std::chrono::seconds namingLimit{10};

    /// `clock` lives as long as the program.
    LocationService(LocationManager &manager, Geocoder &geocoder, Clock &clock, QObject *parent = nullptr);
    ~LocationService() override;

    /// What a place without a name is called.
    [[nodiscard]] static QString unnamedPlace();

    [[nodiscard]] Availability availability() const { return m_availability; }
    /// The last location that currentLocation() found; absent until then.
    [[nodiscard]] const std::optional<WeatherLocation> &lastFix() const { return m_lastFix; }

    /// Where the machine is. Absent without permission, when there is no fix in time, or on any failure. While nobody
    /// was asked for permission, asks for it and does not wait for the decision.
    [[nodiscard]] QCoro::Task<std::optional<WeatherLocation>> currentLocation(std::chrono::milliseconds timeout);
    /// Asks for permission.
    void requestAuthorization();

Q_SIGNALS:
    void availabilityChanged();
    void lastFixChanged();
    /// The system's decision came or changed, and it is a yes.
    void authorizationGranted();

private:
    using Position = std::optional<PositionFix>;

    void refreshAvailability();
    [[nodiscard]] QCoro::Task<Position> requestFix(std::chrono::milliseconds timeout);
    void resolvePending(const Position &position);
    [[nodiscard]] QCoro::Task<WeatherLocation> describe(PositionFix fix);
    void setLastFix(const WeatherLocation &location);

    LocationManager &m_manager;
    Geocoder &m_geocoder;
    Clock &m_clock;
    Availability m_availability = Availability::notDetermined;
    std::optional<WeatherLocation> m_lastFix;
    /// Callers that wait for the fix that was asked for.
    QList<Promise<Position>> m_pendingRequests;
    std::unique_ptr<Clock::Timer> m_timeout;
};

} // namespace moorline
