#include "chrome/Popover.h"

#include <QEvent>
#include <QVBoxLayout>

namespace moorline {

Popover::Popover(PopupWindows &windows, std::unique_ptr<PopoverContent> content)
    : BarPopup(windows, PopupKind::popover)
    , m_content(content.get())
{
    auto *filled = new QVBoxLayout(this);
    filled->setContentsMargins(0, 0, 0, 0);
    filled->setSizeConstraint(QLayout::SetNoConstraint);
    filled->addWidget(content.release());
    setFocusProxy(m_content);
    connect(m_content, &PopoverContent::finished, this, &Popover::dismissed);
}

QSizeF Popover::naturalSize() const
{
    return layout()->sizeHint();
}

bool Popover::wantsKeyboard() const
{
    return m_content->wantsKeyboard();
}

bool Popover::event(QEvent *event)
{
    const bool isHandled = BarPopup::event(event);
    if (event->type() == QEvent::LayoutRequest)
        Q_EMIT naturalSizeChanged();
    return isHandled;
}

} // namespace moorline
