#pragma once

#include "platform/InstanceClaim.h"
#include "platform/Power.h"
#include "platform/StatusBar.h"
#include "platform/SymbolCatalogue.h"
#include "platform/SystemDockControl.h"
#include "platform/SystemSettings.h"

#include <QList>
#include <optional>

namespace moorline::test {

class FakePower final : public Power { };

/// The first of its display until told otherwise.
class FakeInstanceClaim final : public InstanceClaim {
public:
    [[nodiscard]] bool take() override { return isFree; }

    bool isFree = true;
};

/// Keeps what it is to show.
class FakeStatusBar final : public StatusBar {
public:
    void show(StatusBarItem shown) override { item = std::move(shown); }

    std::optional<StatusBarItem> item;
};

class FakeSystemDockControl final : public SystemDockControl {
public:
    [[nodiscard]] QCoro::Task<bool> enableAutoHide() override;
    [[nodiscard]] QCoro::Task<bool> setRevealDelay(double seconds) override;

    bool succeeds = true;
    int timesAutoHideEnabled = 0;
    QList<double> delays;
};

class FakeSystemSettings final : public SystemSettings {
public:
    void open(SettingsPane pane) override { opened.append(pane); }

    QList<SettingsPane> opened;
};

/// Every symbol that has a name is a filled square of the asked colour, half again as large as its text.
class FakeSymbolCatalogue final : public SymbolCatalogue {
public:
    [[nodiscard]] QImage symbol(const SymbolRequest &request) const override
    {
        requests.append(request);
        if (request.name.isEmpty())
            return {};
        const int side = qRound(request.pointSize * 1.5 * request.scale);
        QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
        image.fill(request.color);
        image.setDevicePixelRatio(request.scale);
        return image;
    }

    mutable QList<SymbolRequest> requests;
};

} // namespace moorline::test
