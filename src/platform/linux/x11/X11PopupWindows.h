#pragma once

#include "platform/PopupWindows.h"

namespace moorline {

class XConnection;

/// Windows beside those that the window manager knows, and what the X server tells of the pointer over all of them.
class X11PopupWindows final : public PopupWindows {
    Q_OBJECT
public:
    explicit X11PopupWindows(XConnection &connection);

    [[nodiscard]] std::unique_ptr<PopupWindow> adopt(QWidget &window, PopupKind kind) override;
    [[nodiscard]] bool isComposited() const override;
    [[nodiscard]] std::unique_ptr<Handle> openSystemMenu(
        const Menu &menu, MenuPlacement placement, Closed closed) override;
    [[nodiscard]] std::unique_ptr<Handle> watchPresses(Pressed pressed) override;
    [[nodiscard]] std::unique_ptr<Handle> watchEscape(Escaped escaped) override;
    void carryFile(QWidget &source, const QPointF &press, CarriedFile file, Ended ended) override;
    void cancelDrag() override;

private:
    XConnection &m_connection;
};

} // namespace moorline
