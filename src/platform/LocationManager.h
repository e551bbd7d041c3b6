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

    /// Asks the user, or whoever decides. The answer comes as didChangeAuthorization().
    virtual void requestWhenInUseAuthorization() = 0;
    /// Asks for one coarse fix: to about a kilometre where the system lets one choose, else to the city. It comes as
    /// didUpdateLocations() or didFail(), or never.
    virtual void requestLocation() = 0;

Q_SIGNALS:
    /// Oldest first. May be empty.
    void didUpdateLocations(const QList<moorline::PositionFix> &fixes);
    void didFail();
    /// The service was switched on or off, or the permission was given or taken.
    void didChangeAuthorization();
};

} // namespace moorline
