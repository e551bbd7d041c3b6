#pragma once

#include "platform/PopupWindows.h"
#import "platform/macos/MoorlinePanel.h"
#import "platform/macos/PanelPointer.h"

#include <QPointer>
#include <QWidget>
#include <memory>

namespace moorline {

/// A panel of our own above the bar's, with the widget's view in it, for the reasons that the bar itself has one.
class MacPopupWindow final : public PopupWindow {
public:
    MacPopupWindow(QWidget &window, PopupKind kind);
    ~MacPopupWindow() override;
    Q_DISABLE_COPY_MOVE(MacPopupWindow)

    void setFrame(const QRectF &frame) override;
    void orderFront() override;
    /// The panel becomes key without its application becoming active, so that the key window of the active application
    /// has the keyboard again as soon as the panel goes.
    void takeKeyboard() override;
    void orderOut() override;

private:
    MoorlinePopupPanel *m_panel = nil;
    QPointer<QWidget> m_widget;
    /// Null for a help tag, which lets the pointer through.
    std::unique_ptr<PanelPointer> m_pointer;
};

} // namespace moorline
