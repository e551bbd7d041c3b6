#pragma once

#include "platform/PopupWindows.h"

#include <QWidget>

namespace moorline {

/// A window above the bar in the bar's own look: with round corners where windows may be transparent in part, square
/// and opaque where they may not.
class BarPopup : public QWidget {
    Q_OBJECT
public:
    BarPopup(PopupWindows &windows, PopupKind kind);
    ~BarPopup() override;

    /// What the window wants to be as large as, in points.
    [[nodiscard]] virtual QSizeF naturalSize() const = 0;
    /// Whether the window is of no use without the keyboard.
    [[nodiscard]] virtual bool wantsKeyboard() const { return false; }

    /// In points, origin at the bottom left of the primary screen.
    void setFrame(const QRectF &frame);
    [[nodiscard]] QRectF frame() const { return m_frame; }
    void orderFront();
    void orderOut();

Q_SIGNALS:
    /// Another size is the natural one now.
    void naturalSizeChanged();
    /// The window has done its part, or was told to go by the keyboard, and is to be closed.
    void dismissed();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    [[nodiscard]] PopupWindow &native();

    PopupWindows &m_windows;
    PopupKind m_kind;
    QRectF m_frame;
    /// Null until the window is first placed.
    std::unique_ptr<PopupWindow> m_native;
};

} // namespace moorline
