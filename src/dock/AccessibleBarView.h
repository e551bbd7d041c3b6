#pragma once

#include <QAccessibleWidget>

namespace moorline {

class BarItem;
class DockHostingView;

/// The view of the bar as assistive technology sees it: a pane that holds the bar's items from left to right.
class AccessibleBarView final : public QAccessibleWidget {
public:
    explicit AccessibleBarView(DockHostingView &view);

    [[nodiscard]] QRect rect() const override;
    [[nodiscard]] int childCount() const override;
    [[nodiscard]] QAccessibleInterface *child(int index) const override;
    [[nodiscard]] int indexOfChild(const QAccessibleInterface *child) const override;
    [[nodiscard]] QAccessibleInterface *childAt(int x, int y) const override;

private:
    [[nodiscard]] QList<BarItem *> items() const;
};

/// Where a part of the view lies on the desktop, in the coordinates that assistive technology counts in; `part` in
/// those of the view's viewport.
[[nodiscard]] QRect accessibleRect(const QWidget &view, const QRectF &part);

} // namespace moorline
