#pragma once

#include "platform/RetrySchedule.h"
#include "weather/WeatherRequests.h"

#include <QObject>
#include <vector>

namespace moorline {

class HttpClient;
class LocationService;
class Network;
class SettingsStore;

/// Finds out where the user is, asks for the weather there, and keeps the last good answer whatever happens.
class WeatherService final : public QObject {
    Q_OBJECT
public:
    enum class LocationSource { locationServices, ipAddress, manual };

    /// What the service is built on. Everything lent here outlives it.
    struct Context {
        const SettingsStore &store;
        Clock &clock;
        HttpClient &client;
        LocationService &location;
        const Network &network;
        WeatherEndpoints endpoints;
        /// Whether to log where each location came from.
        bool debug;
    };

    static constexpr std::chrono::seconds refreshInterval{600};
    /// How long the machine's location may take before something else is asked.
    static constexpr std::chrono::seconds locationTimeout{8};
    /// After how long a location service that is allowed but was too slow is asked again.
    static constexpr std::chrono::seconds locationRetryDelay{20};

    explicit WeatherService(Context context, QObject *parent = nullptr);
    ~WeatherService() override;

    /// Refreshes now, every ten minutes, and whenever the settings change.
    void start();
    /// Gives up a refresh that is under way and begins another; ends with it. When it fails, it is tried again soon.
    QCoro::Task<> refresh();
    /// Refreshes, unless without a way to the internet that would be in vain: whoever tells of one refreshes then.
    void refreshIfReachable();
    /// None on any failure. Gives up the search before, which then finds nothing.
    [[nodiscard]] QCoro::Task<QList<WeatherLocation>> searchCities(QString query);

    /// The last weather that could be fetched; absent until the first.
    [[nodiscard]] const std::optional<WeatherSnapshot> &snapshot() const { return m_snapshot; }
    /// The place of the last refresh; absent before the first.
    [[nodiscard]] const std::optional<WeatherLocation> &resolvedLocation() const { return m_resolvedLocation; }
    [[nodiscard]] LocationSource locationSource() const { return m_locationSource; }
    /// Why the last refresh failed, in the user's language; absent when it did not.
    [[nodiscard]] const std::optional<QString> &lastError() const { return m_lastError; }
    [[nodiscard]] int locationRetriesRemaining() const { return m_locationRetriesRemaining; }

Q_SIGNALS:
    void snapshotChanged();
    void resolvedLocationChanged();
    void locationSourceChanged();
    void lastErrorChanged();

private:
    using Session = WeatherRequests::Session;
    struct Place {
        LocationSource source;
        WeatherLocation location;
    };

    /// A refresh that nothing new gave reason for.
    QCoro::Task<> refreshAgain();
    [[nodiscard]] QCoro::Task<> run(Session session);
    [[nodiscard]] QCoro::Task<Place> locate(Session session, Settings settings);
    void scheduleLocationRetry();
    void noteOutcome(bool isGood);
    void setPlace(const Place &place);
    void setResult(const ForecastResult &result);
    void setLastError(const std::optional<QString> &error);
    void logPlace() const;

    Context m_context;
    WeatherRequests m_requests;
    std::optional<WeatherSnapshot> m_snapshot;
    std::optional<WeatherLocation> m_resolvedLocation;
    LocationSource m_locationSource = LocationSource::manual;
    std::optional<QString> m_lastError;
    int m_locationRetriesRemaining = 3;
    std::unique_ptr<Clock::Timer> m_timer;
    /// Never more than the retries there are.
    std::vector<std::unique_ptr<Clock::Timer>> m_locationRetries;
    RetrySchedule m_retries;
    Session m_refresh;
    Session m_search;
};

/// What the user and the log call it.
[[nodiscard]] QString text(WeatherService::LocationSource source);

} // namespace moorline
