#pragma once

#include "platform/PanelWindow.h"
#import "platform/macos/MoorlinePanel.h"
#import "platform/macos/PanelPointer.h"

#include <QPointer>
#include <QWidget>
#include <memory>

namespace moorline {

/// A panel of our own with the widget's view in it.
///
/// Qt's own window for a widget is of no use here. Whether a panel activates its application is settled when it is
/// created, and Qt sets style, level and collection behaviour anew whenever it shows a window or sees its flags change.
/// A Qt view inside a window that is not Qt's keeps drawing, resizing and receiving events, a click on the inactive
/// panel included, and Qt leaves that window alone.
class MacPanelWindow final : public PanelWindow {
public:
    MacPanelWindow() = default;
    ~MacPanelWindow() override;
    Q_DISABLE_COPY_MOVE(MacPanelWindow)

    void adopt(QWidget &panel) override;
    void setLevel(int level) override;
    [[nodiscard]] int level() const override;
    void setCollectionBehavior(unsigned behavior) override;
    void setFrame(const QRectF &frame) override;
    [[nodiscard]] QRectF frame() const override;
    /// In the toolkit's coordinates, which it converts itself.
    [[nodiscard]] QRect accessibleRect(const QRectF &part) const override;
    void orderFrontRegardless() override;
    void setInteractiveArea(const QPainterPath &area) override;

private:
    void close();

    MoorlinePanel *m_panel = nil;
    QPointer<QWidget> m_widget;
    std::unique_ptr<PanelPointer> m_pointer;
};

} // namespace moorline
