#pragma once

#include "platform/LocationManager.h"

#import <CoreLocation/CoreLocation.h>

@class MoorlineLocationDelegate;

namespace moorline {

/// To be made on the main thread: Core Location reports on the run loop of the thread that made the manager.
class MacLocationManager final : public LocationManager {
public:
    MacLocationManager();
    ~MacLocationManager() override;

    [[nodiscard]] bool locationServicesEnabled() const override;
    [[nodiscard]] LocationAuthorization authorizationStatus() const override;
    [[nodiscard]] std::optional<PositionFix> location() const override;
    [[nodiscard]] bool asksOnce() const override { return true; }
    void setDesiredAccuracy(LocationAccuracy accuracy) override;
    void requestWhenInUseAuthorization() override;
    void requestLocation() override;

    // From the delegate.
    void receive(NSArray<CLLocation *> *locations);
    void receiveAuthorization();

private:
    void setServicesEnabled(bool enabled);

    CLLocationManager *const m_manager;
    MoorlineLocationDelegate *const m_delegate;
    /// Serial, so that the last answer is the newest.
    const dispatch_queue_t m_questions;
    /// On until the system says otherwise: where it is off, the status is "denied" anyway.
    bool m_servicesEnabled = true;
};

} // namespace moorline
