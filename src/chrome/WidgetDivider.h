#pragma once

#include <QGraphicsWidget>

namespace moorline {

/// The thin vertical line between two widgets of the bar. The row gives it its height.
class WidgetDivider final : public QGraphicsWidget {
    Q_OBJECT
public:
    /// In points.
    static constexpr qreal lineWidth = 1;

    explicit WidgetDivider(QGraphicsItem *parent = nullptr);

    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;
};

} // namespace moorline
