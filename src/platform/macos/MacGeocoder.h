#pragma once

#include "platform/Geocoder.h"

#include <memory>

namespace moorline {

class MacGeocoder final : public Geocoder {
public:
    void reverseGeocode(double latitude, double longitude, Completion completion) override;

private:
    struct Lifetime { };

    /// Questions under way hold it weakly: nobody is called back once it is gone.
    const std::shared_ptr<const Lifetime> m_lifetime = std::make_shared<const Lifetime>();
};

} // namespace moorline
