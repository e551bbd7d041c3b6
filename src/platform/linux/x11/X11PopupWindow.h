#pragma once

#include "platform/PopupWindows.h"
#include "platform/linux/x11/FocusLoan.h"

#include <QPointer>
#include <QWidget>
#include <optional>

namespace moorline {

/// A window that bypasses the window manager, as the panel below it does. It is no popup in Qt's sense: those are left
/// out of the accessibility tree, and keep the pointer from every other program.
class X11PopupWindow final : public PopupWindow {
public:
    X11PopupWindow(XConnection &connection, QWidget &window, PopupKind kind);

    void setFrame(const QRectF &frame) override;
    void orderFront() override;
    void takeKeyboard() override;
    void orderOut() override;

private:
    [[nodiscard]] xcb_window_t native() const;
    void writeHints() const;

    XConnection &m_connection;
    PopupKind m_kind;
    QPointer<QWidget> m_window;
    std::optional<FocusLoan> m_loan;
};

} // namespace moorline
