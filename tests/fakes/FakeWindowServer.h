#pragma once

#include "platform/WindowServer.h"

namespace moorline::test {

/// macOS's levels, no windows, and no query for spaces until told otherwise.
class FakeWindowServer final : public WindowServer {
public:
    static constexpr int dockLevel = 20;
    static constexpr int mainMenuLevel = 24;

    [[nodiscard]] std::optional<QList<WindowDescription>> onScreenWindows() const override
    {
        ++timesListed;
        return windows;
    }
    [[nodiscard]] int level(WindowLevel level) const override
    {
        return level == WindowLevel::dock ? dockLevel : mainMenuLevel;
    }
    [[nodiscard]] std::optional<QList<DisplaySpace>> managedDisplaySpaces() const override { return spaces; }
    [[nodiscard]] std::optional<QString> mainDisplayUUID() const override { return displayUUID; }

    /// One display whose current space has this type.
    void setSpaceType(int type)
    {
        displayUUID = QStringLiteral("main");
        spaces = QList{DisplaySpace{displayUUID, type}};
    }

    std::optional<QList<WindowDescription>> windows = QList<WindowDescription>();
    std::optional<QList<DisplaySpace>> spaces;
    std::optional<QString> displayUUID;
    mutable int timesListed = 0;
};

} // namespace moorline::test
