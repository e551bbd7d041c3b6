#pragma once

#include "dock/DockBarView.h"

#include <QGraphicsScene>

namespace moorline {

/// Draws a picture of the bar on a plain background, without a panel.
class PreviewRenderer {
public:
    /// Has `bar`, whose content width nobody follows, drawn where nobody looks: what has to be asked for before it can
    /// be drawn, such as icons, is on its way from now on.
    explicit PreviewRenderer(std::unique_ptr<DockBarView> bar);

    /// Writes a PNG of 3200 × 276 pixels and logs how it went.
    void render(const QString &path);

private:
    [[nodiscard]] QImage draw();

    QGraphicsScene m_scene;
    DockBarView *m_bar;
};

} // namespace moorline
