#pragma once

#include "platform/Geocoder.h"

#include <QObject>
#include <QThreadPool>
#include <queue>

namespace moorline {

/// Names from the cities that libgweather knows, without a network. The questions are answered one after another, on a
/// thread that ends when there are none.
class GWeatherGeocoder final : public Geocoder {
public:
    GWeatherGeocoder();
    /// Waits for the question under way. None of the completions is called any more.
    ~GWeatherGeocoder() override;

    void reverseGeocode(double latitude, double longitude, Completion completion) override;

private:
    void answer(const std::optional<Placemark> &place);

    /// Where the answers come to. The thread is gone before it.
    QObject m_home;
    /// Oldest first, as the questions. They stay in this thread: what they hold may belong to it.
    std::queue<Completion> m_completions;
    QThreadPool m_thread;
};

} // namespace moorline
