#pragma once

#include "platform/Screens.h"

namespace moorline::test {

/// One 1440 × 900 screen until told otherwise.
class FakeScreens final : public Screens {
public:
    [[nodiscard]] QList<Screen> screens() const override { return m_screens; }

    void set(QList<Screen> screens)
    {
        m_screens = std::move(screens);
        Q_EMIT screensChanged();
    }

    /// As a system does that is slow to tell.
    void setUnannounced(QList<Screen> screens) { m_screens = std::move(screens); }

    static Screen screen(const QRectF &frame) { return {frame, frame, {}, 1}; }

private:
    QList<Screen> m_screens{screen({0, 0, 1440, 900})};
};

} // namespace moorline::test
