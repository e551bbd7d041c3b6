#pragma once

#include "platform/LocationManager.h"

#include <array>

namespace moorline {

/// What is known of GeoClue's willingness to say where the machine is.
enum class GeoClueCondition {
    notAsked,
    /// It was started for this program.
    granted,
    /// No agent, an agent or a user that says no, no desktop entry: GeoClue does not tell which.
    refused,
    /// The system bus does not let this user talk to it.
    forbidden,
    /// No system bus, or no such service that could be started.
    absent,
    /// No answer in time, or not able to answer this time.
    silent,
    /// An answer that nobody expects.
    broken,
};

/// What a condition means in the words of the LocationManager.
struct GeoClueMeaning {
    bool servicesEnabled;
    LocationAuthorization authorization;

    bool operator==(const GeoClueMeaning &) const = default;
};

struct GeoClueRow {
    GeoClueCondition condition;
    GeoClueMeaning meaning;
};

/// Every condition with its meaning. One that is not determined is asked again when a position is next wanted.
inline constexpr std::array<GeoClueRow, 7> geoClueMeanings{{
    {GeoClueCondition::notAsked, {true, LocationAuthorization::notDetermined}},
    {GeoClueCondition::granted, {true, LocationAuthorization::authorized}},
    {GeoClueCondition::refused, {true, LocationAuthorization::denied}},
    {GeoClueCondition::forbidden, {true, LocationAuthorization::restricted}},
    {GeoClueCondition::absent, {false, LocationAuthorization::notDetermined}},
    {GeoClueCondition::silent, {true, LocationAuthorization::notDetermined}},
    {GeoClueCondition::broken, {true, LocationAuthorization::denied}},
}};

constexpr const GeoClueMeaning &meaningOf(GeoClueCondition condition)
{
    return geoClueMeanings.at(std::size_t(condition)).meaning;
}

/// The GClueAccuracyLevel for a place that is wanted to that. GeoClue has no figures for its levels: the city is the
/// coarsest that names a town.
constexpr uint geoClueLevel(LocationAccuracy accuracy)
{
    return accuracy == LocationAccuracy::exact ? 8 : 4;
}

/// How far a question had come when it failed.
enum class GeoClueStep { findingService, settingUp, starting, waiting, over };

/// What the D-Bus error of that name means, as the answer to a call in that step.
[[nodiscard]] GeoClueCondition conditionOf(const QString &errorName, GeoClueStep step);

} // namespace moorline
