#pragma once

#include "platform/Geocoder.h"

#include <QObject>
#include <QThreadPool>
#include <queue>

namespace moorline {

/// What the answers come by from the thread that finds them, which may outlive whoever asked.
class GWeatherAnswers final : public QObject {
    Q_OBJECT
Q_SIGNALS:
    void found(const std::optional<moorline::Placemark> &place);
};

/// Names from the cities that libgweather knows, without a network. The questions are answered one after another, on a
/// thread that ends when there are none.
class GWeatherGeocoder final : public Geocoder {
public:
    GWeatherGeocoder();
    /// None of the completions is called any more. A question under way that takes long is left to itself.
    ~GWeatherGeocoder() override;

    void reverseGeocode(double latitude, double longitude, Completion completion) override;

private:
    void answer(const std::optional<Placemark> &place);

    /// Where the answers come to.
    QObject m_home;
    std::shared_ptr<GWeatherAnswers> m_answers = std::make_shared<GWeatherAnswers>();
    /// Oldest first, as the questions. They stay in this thread: what they hold may belong to it.
    std::queue<Completion> m_completions;
    std::unique_ptr<QThreadPool> m_thread = std::make_unique<QThreadPool>();
};

} // namespace moorline
