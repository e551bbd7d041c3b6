#pragma once

#include "platform/Clock.h"
#include "platform/LocationManager.h"
#include "settings/Settings.h"
#include "support/Promise.h"
#include "weather/LocationQuestions.h"

#include <QPointer>
#include <functional>

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

    /// What is farther away, in kilometres, does not name a place.
    static constexpr double farthestName = 100;

    /// `clock` lives as long as the program.
    LocationService(LocationManager &manager, Geocoder &geocoder, Clock &clock, QObject *parent = nullptr);
    ~LocationService() override;

    /// What a place without a name is called.
    [[nodiscard]] static QString unnamedPlace();

    [[nodiscard]] Availability availability() const { return m_availability; }
    /// The last location that currentLocation() found; absent until then.
    [[nodiscard]] const std::optional<WeatherLocation> &lastFix() const { return m_lastFix; }

    /// Where the machine is. Absent without permission, when there is no fix in time, or on any failure. While nobody
    /// was asked for permission, asks for it and does not wait for the decision. A fix is named only while somebody
    /// wants it: when `isWanted` says no by then, there is no answer either.
    [[nodiscard]] QCoro::Task<std::optional<WeatherLocation>> currentLocation(
        std::chrono::milliseconds timeout, std::function<bool()> isWanted = {});
    /// Asks for permission.
    void requestAuthorization();

Q_SIGNALS:
    void availabilityChanged();
    void lastFixChanged();
    /// The system's decision came or changed, and it is a yes.
    void authorizationGranted();
    /// A refusal may be none any more: whoever wants a location may ask again.
    void anotherQuestionAdvised();

private:
    using Position = std::optional<PositionFix>;

    /// One question for the name of a fix, and everybody who waits for it.
    struct Naming {
        PositionFix fix;
        QList<Promise<WeatherLocation>> waiting;
    };

    void refreshAvailability();
    void noteAuthorization();
    void noteAnswer();
    void adviseAnotherQuestion();
    [[nodiscard]] bool mayAskUnprompted() const;
    [[nodiscard]] QCoro::Task<Position> requestFix(std::chrono::milliseconds timeout);
    void resolvePending(const Position &position);
    [[nodiscard]] QCoro::Task<WeatherLocation> describe(PositionFix fix);
    QCoro::Task<> findName(std::shared_ptr<Naming> naming);
    void setLastFix(const WeatherLocation &location);

    LocationManager &m_manager;
    Geocoder &m_geocoder;
    Clock &m_clock;
    Availability m_availability = Availability::notDetermined;
    std::optional<WeatherLocation> m_lastFix;
    /// Callers that wait for the fix that was asked for.
    QList<Promise<Position>> m_pendingRequests;
    std::unique_ptr<Clock::Timer> m_timeout;
    QList<std::shared_ptr<Naming>> m_namings;
    LocationQuestions m_questions;
    bool m_wasAsked = false;
    std::unique_ptr<Clock::Timer> m_nextQuestion;
};

} // namespace moorline
