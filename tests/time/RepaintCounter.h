#pragma once

#include <QCoreApplication>
#include <QGraphicsScene>
#include <QGraphicsWidget>
#include <QPainter>
#include <utility>

namespace moorline::test {

/// A scene that counts how often something in it asked to be repainted.
class RepaintCounter final : public QGraphicsScene {
public:
    /// The widget stays its maker's.
    explicit RepaintCounter(QGraphicsWidget &widget)
        : m_widget(widget)
    {
        addItem(&widget);
        QCoreApplication::processEvents();
        connect(this, &QGraphicsScene::changed, this,
            [this](const QList<QRectF> &regions) { m_repaints += regions.isEmpty() ? 0 : 1; });
    }
    ~RepaintCounter() override { removeItem(&m_widget); }

    /// Since the last time it was asked.
    [[nodiscard]] int takeRepaints()
    {
        QCoreApplication::processEvents();
        return std::exchange(m_repaints, 0);
    }

private:
    QGraphicsWidget &m_widget;
    int m_repaints = 0;
};

/// What the widget paints at this scale, on nothing.
[[nodiscard]] inline QImage painted(QGraphicsWidget &widget, qreal scale = 1)
{
    QImage image((widget.size() * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    widget.paint(&painter, nullptr, nullptr);
    return image;
}

} // namespace moorline::test
