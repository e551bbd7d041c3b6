#pragma once

#include "platform/PanelWindow.h"
#include "platform/linux/x11/PanelShape.h"
#include "platform/linux/x11/PanelStacking.h"
#include "platform/linux/x11/X11DropTarget.h"

#include <QObject>
#include <QPointer>
#include <QWidget>

namespace moorline {

class X11Coordinates;

/// A dock window that bypasses the window manager: a managed one would lie below a full-screen window with the focus.
class X11PanelWindow final : public QObject, public PanelWindow {
    Q_OBJECT
public:
    X11PanelWindow(XConnection &connection, ClientWindows &clients, Clock &clock);

    void adopt(QWidget &panel) override;
    /// X has one level for all that bypasses the window manager. The number is only kept.
    void setLevel(int level) override { m_level = level; }
    [[nodiscard]] int level() const override { return m_level; }
    /// The window is above full-screen windows and on every desktop in any case.
    void setCollectionBehavior(unsigned behavior) override;
    void setFrame(const QRectF &frame) override;
    [[nodiscard]] QRectF frame() const override;
    /// In device pixels, as a screen reader's highlight is.
    [[nodiscard]] QRect accessibleRect(const QRectF &part) const override;
    void orderFrontRegardless() override;
    void setInteractiveArea(const QPainterPath &area) override;

    /// Qt makes another native window when the screen of the first goes and none beside it is left, and hides it.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void takeNativeWindow();
    void showAgain();
    void updateShape();
    [[nodiscard]] std::optional<QRegion> boundingRegion(const X11Coordinates &coordinates) const;

    XConnection &m_connection;
    Clock &m_clock;
    PanelStacking m_stacking;
    QPointer<QWidget> m_panel;
    std::optional<PanelShape> m_shape;
    std::optional<X11DropTarget> m_dropTarget;
    std::optional<QPainterPath> m_area;
    int m_level = 0;
    bool m_isOrderedFront = false;
};

} // namespace moorline
