#pragma once

#include "platform/PopupWindows.h"

namespace moorline {

/// Panels beside the bar's. The window server always blends windows.
class MacPopupWindows final : public PopupWindows {
    Q_OBJECT
public:
    using PopupWindows::PopupWindows;

    [[nodiscard]] std::unique_ptr<PopupWindow> adopt(QWidget &window, PopupKind kind) override;
    [[nodiscard]] bool isComposited() const override { return true; }
    [[nodiscard]] std::unique_ptr<Handle> openSystemMenu(
        const Menu &menu, MenuPlacement placement, Closed closed) override;
    [[nodiscard]] std::unique_ptr<Handle> watchPresses(Pressed pressed) override;
    [[nodiscard]] std::unique_ptr<Handle> watchEscape(Escaped escaped) override;
    void carryFile(QWidget &source, const QPointF &press, CarriedFile file, Ended ended) override;
    void cancelDrag() override;
};

} // namespace moorline
