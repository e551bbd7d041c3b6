#pragma once

#include "chrome/BarPopup.h"

namespace moorline {

/// What a popover holds. A change of its size hint changes the popover's size.
class PopoverContent : public QWidget {
    Q_OBJECT
public:
    using QWidget::QWidget;

    /// Whether it is of no use without the keyboard, as a list is that arrow keys walk through.
    [[nodiscard]] virtual bool wantsKeyboard() const { return false; }

Q_SIGNALS:
    /// There is nothing more to do here, as after something was opened: the popover closes.
    void finished();
};

/// A window above the bar that holds any widget.
class Popover final : public BarPopup {
    Q_OBJECT
public:
    Popover(PopupWindows &windows, std::unique_ptr<PopoverContent> content);

    [[nodiscard]] QSizeF naturalSize() const override;
    [[nodiscard]] bool wantsKeyboard() const override;
    [[nodiscard]] PopoverContent &content() const { return *m_content; }

protected:
    bool event(QEvent *event) override;

private:
    PopoverContent *m_content;
};

} // namespace moorline
