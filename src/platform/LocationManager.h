#pragma once

#include <QDateTime>
#include <QObject>
#include <optional>

namespace moorline {

/// Where the machine was at one moment.
struct PositionFix {
    /// In degrees, from -90 to 90 and from -180 to 180.
    double latitude = 0;
    double longitude = 0;
    QDateTime timestamp;

    bool operator==(const PositionFix &) const = default;
};

/// What the system lets this program know of where the machine is.
enum class LocationAuthorization {
    /// Nobody has been asked yet.
    notDetermined,
    /// Something other than the user forbids it.
    restricted,
    denied,
    authorized,
    /// A state that a newer system knows and this program does not.
    unknown,
};

/// How exactly the machine's place is wanted.
enum class LocationAccuracy {
    /// Enough to name the town, and for its weather: about a kilometre.
    town,
    /// As exactly as the system can.
    exact,
};

/// The system's location service: permission, and one coarse fix at a time. Signals come on the main thread.
class LocationManager : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// Whether the service as a whole is there and switched on.
    [[nodiscard]] virtual bool locationServicesEnabled() const = 0;
    [[nodiscard]] virtual LocationAuthorization authorizationStatus() const = 0;
    /// The last known position, however old.
    [[nodiscard]] virtual std::optional<PositionFix> location() const = 0;

    /// Whether the system itself sees to it that the user is asked only once, and keeps the answer. Where it does not,
    /// each question may be one to the user, and a refusal an accident of the moment.
    [[nodiscard]] virtual bool asksOnce() const = 0;

    /// For whatever is asked from here on.
    virtual void setDesiredAccuracy(LocationAccuracy accuracy) = 0;
    /// Asks the user, or whoever decides. The answer comes as didChangeAuthorization(), when it is another than before.
    virtual void requestWhenInUseAuthorization() = 0;
    /// Asks for one fix. It comes as didUpdateLocations() or didFail(), or never.
    virtual void requestLocation() = 0;

Q_SIGNALS:
    /// Oldest first. May be empty.
    void didUpdateLocations(const QList<moorline::PositionFix> &fixes);
    void didFail();
    /// The service was switched on or off, or the permission was given or taken.
    void didChangeAuthorization();
    /// Where the system does not ask once: somebody decided, the same as before or otherwise. After
    /// didChangeAuthorization().
    void didAnswerRequest();
};

} // namespace moorline
