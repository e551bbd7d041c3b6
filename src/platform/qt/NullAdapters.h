#pragma once

#include "platform/Accessibility.h"
#include "platform/InstanceClaim.h"
#include "platform/PanelWindow.h"
#include "platform/Pointer.h"
#include "platform/PopupWindows.h"
#include "platform/StatusBar.h"
#include "platform/WindowServer.h"

#include <QPointer>
#include <QWidget>

namespace moorline {

/// Where nothing is shown on a screen: a pointer that is nowhere near the bar.
class NullPointer final : public Pointer {
public:
    [[nodiscard]] QPointF location() const override;
    [[nodiscard]] Qt::MouseButtons pressedButtons() const override;
};

/// Where nothing is shown on a screen: without a display nobody is in the way.
class NullInstanceClaim final : public InstanceClaim {
public:
    [[nodiscard]] bool take() override { return true; }
};

/// Where other programs are not asked what they show: never trusted, and every element is without anything.
class NullAccessibility final : public Accessibility {
public:
    [[nodiscard]] bool isProcessTrusted() const override { return false; }
    [[nodiscard]] std::shared_ptr<AccessibilityElement> application(qint64 process) const override;
};

/// Where nothing is shown on a screen: one that tells nothing.
class NullWindowServer final : public WindowServer {
public:
    [[nodiscard]] std::optional<QList<WindowDescription>> onScreenWindows() const override;
    [[nodiscard]] int level(WindowLevel level) const override;
    [[nodiscard]] std::optional<QList<DisplaySpace>> managedDisplaySpaces() const override;
    [[nodiscard]] std::optional<QString> mainDisplayUUID() const override;
};

/// Where nothing is shown on a screen: keeps its frame, and gives the panel its size so that it can be drawn into a
/// picture.
class NullPanelWindow final : public PanelWindow {
public:
    void adopt(QWidget &panel) override;
    void setLevel(int level) override;
    [[nodiscard]] int level() const override;
    void setCollectionBehavior(unsigned behavior) override;
    void setFrame(const QRectF &frame) override;
    [[nodiscard]] QRectF frame() const override;
    [[nodiscard]] QRect accessibleRect(const QRectF &part) const override;
    void orderFrontRegardless() override;
    void setInteractiveArea(const QPainterPath &area) override;

private:
    QPointer<QWidget> m_panel;
    QRectF m_frame;
    int m_level = 0;
};

/// Where nothing is shown on a screen: no place for an item.
class NullStatusBar final : public StatusBar {
public:
    void show(StatusBarItem item) override;
};

/// Where nothing is shown on a screen: windows of the asked size that nobody presses beside.
class NullPopupWindows final : public PopupWindows {
public:
    [[nodiscard]] std::unique_ptr<PopupWindow> adopt(QWidget &window, PopupKind kind) override;
    [[nodiscard]] bool isComposited() const override;
    [[nodiscard]] std::unique_ptr<Handle> openSystemMenu(
        const Menu &menu, MenuPlacement placement, Closed closed) override;
    [[nodiscard]] std::unique_ptr<Handle> watchPresses(Pressed pressed) override;
    [[nodiscard]] std::unique_ptr<Handle> watchEscape(Escaped escaped) override;
    void carryFile(QWidget &source, const QPointF &press, CarriedFile file, Ended ended) override;
    void cancelDrag() override;
};

} // namespace moorline
