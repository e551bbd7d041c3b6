#include "dock/AccessibleBarView.h"

#include "chrome/BarItem.h"
#include "dock/AccessibleBarItem.h"
#include "dock/DockBarView.h"
#include "dock/DockHostingView.h"
#include "dock/DockPanel.h"
#include "platform/PanelWindow.h"

namespace moorline {

AccessibleBarView::AccessibleBarView(DockHostingView &view)
    : QAccessibleWidget(&view, QAccessible::Pane)
{
}

QList<BarItem *> AccessibleBarView::items() const
{
    return barItems(static_cast<const DockHostingView *>(widget())->bar());
}

QRect AccessibleBarView::rect() const
{
    return accessibleRect(*widget(), QRectF(widget()->rect()));
}

int AccessibleBarView::childCount() const
{
    return int(items().size());
}

QAccessibleInterface *AccessibleBarView::child(int index) const
{
    return QAccessible::queryAccessibleInterface(items().value(index));
}

int AccessibleBarView::indexOfChild(const QAccessibleInterface *child) const
{
    return int(items().indexOf(qobject_cast<BarItem *>(child->object())));
}

QAccessibleInterface *AccessibleBarView::childAt(int x, int y) const
{
    return childItemAt(items(), {x, y});
}

QRect accessibleRect(const QWidget &view, const QRectF &part)
{
    const auto *panel = qobject_cast<const DockPanel *>(view.window());
    if (!panel)
        return part.translated(view.mapToGlobal(QPointF(0, 0))).toAlignedRect();
    return panel->native().accessibleRect(part.translated(view.mapTo(panel, QPointF(0, 0))));
}

} // namespace moorline
