#pragma once

#include "dock/DockBarView.h"

namespace moorline {

/// Draws a picture of the bar on a plain background, without a panel.
class PreviewRenderer {
public:
    /// Builds a bar whose content width nobody follows.
    using MakeBar = std::function<std::unique_ptr<DockBarView>()>;

    explicit PreviewRenderer(MakeBar makeBar);

    /// Writes a PNG of 3200 × 276 pixels and logs how it went.
    void render(const QString &path) const;

private:
    [[nodiscard]] QImage draw() const;

    MakeBar m_makeBar;
};

} // namespace moorline
