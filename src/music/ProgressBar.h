#pragma once

#include <QGraphicsWidget>

namespace moorline {

/// How far a track has come.
class ProgressBar final : public QGraphicsWidget {
    Q_OBJECT
public:
    /// In points.
    static constexpr qreal height = 3;

    explicit ProgressBar(QGraphicsItem *parent);

    /// From 0 to 1. Repaints only what can be seen to have moved.
    void setProgress(double progress);

    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;

private:
    [[nodiscard]] qreal fillWidth(double progress) const;

    double m_progress = 0;
};

} // namespace moorline
