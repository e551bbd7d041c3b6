#pragma once

#include <QList>
#include <QString>
#include <functional>
#include <optional>

namespace moorline {

/// What is known of a place. Names are in the user's language where the source has them.
struct Placemark {
    /// City or town.
    std::optional<QString> locality;
    /// County or district.
    std::optional<QString> subAdministrativeArea;
    /// State or region.
    std::optional<QString> administrativeArea;
    std::optional<QString> country;
    /// An IANA zone name.
    std::optional<QString> timeZone;
    /// How far it is from where it was asked for, in kilometres; absent where the place lies within it.
    std::optional<double> distance = {};

    bool operator==(const Placemark &) const = default;
};

/// Names for positions.
class Geocoder {
public:
    using Completion = std::function<void(const QList<Placemark> &)>;

    virtual ~Geocoder() = default;

    /// Answers at most once, on the main thread and never from within this call; the best placemark comes first, none
    /// come when the place has no name or the question failed. In degrees.
    virtual void reverseGeocode(double latitude, double longitude, Completion completion) = 0;
};

} // namespace moorline
