#pragma once

#include <QColor>
#include <QFont>
#include <QGraphicsWidget>
#include <QList>
#include <QPaintDevice>
#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <iterator>

namespace moorline::test {

/// A piece of text as it was asked for, whatever the fonts that are installed make of it.
struct PaintedText {
    QString text;
    int pixelSize;
    int weight;
    qreal tracking;
    QColor color;
    /// Where its baseline begins.
    QPointF origin;
};

struct PaintedShape {
    QRectF bounds;
    QColor color;
};

/// Takes down what a widget paints, at one pixel for each point.
class PaintRecorder final : public QPaintDevice {
public:
    explicit PaintRecorder(QGraphicsWidget &widget)
        : m_size(widget.size().toSize())
        , m_engine(*this)
    {
        QPainter painter(this);
        widget.paint(&painter, nullptr, nullptr);
    }

    [[nodiscard]] QPaintEngine *paintEngine() const override { return &m_engine; }

    /// What was painted in that size, from left to right.
    [[nodiscard]] QList<PaintedText> textsOfSize(int pixelSize) const
    {
        QList<PaintedText> found;
        std::copy_if(texts.begin(), texts.end(), std::back_inserter(found),
            [pixelSize](const PaintedText &text) { return text.pixelSize == pixelSize; });
        return found;
    }

    QList<PaintedText> texts;
    QList<PaintedShape> shapes;

protected:
    [[nodiscard]] int metric(PaintDeviceMetric metric) const override
    {
        switch (metric) {
        case PdmWidth:
            return m_size.width();
        case PdmHeight:
            return m_size.height();
        case PdmDpiX:
        case PdmDpiY:
        case PdmPhysicalDpiX:
        case PdmPhysicalDpiY:
            return 96;
        case PdmDevicePixelRatio:
            return 1;
        case PdmDevicePixelRatioScaled:
            return int(devicePixelRatioFScale());
        case PdmDepth:
            return 32;
        default:
            return 0;
        }
    }

private:
    class Engine final : public QPaintEngine {
    public:
        explicit Engine(PaintRecorder &record)
            : QPaintEngine(AllFeatures)
            , m_record(record)
        {
        }
        bool begin(QPaintDevice *) override { return true; }
        bool end() override { return true; }
        void updateState(const QPaintEngineState &) override { }
        void drawPixmap(const QRectF &, const QPixmap &, const QRectF &) override { }
        void drawPath(const QPainterPath &path) override
        {
            m_record.shapes.append({path.boundingRect(), painter()->brush().color()});
        }
        void drawTextItem(const QPointF &origin, const QTextItem &item) override
        {
            const QFont font = item.font();
            m_record.texts.append(
                {item.text(), font.pixelSize(), font.weight(), font.letterSpacing(), painter()->pen().color(), origin});
        }
        [[nodiscard]] Type type() const override { return User; }

    private:
        PaintRecorder &m_record;
    };

    QSize m_size;
    mutable Engine m_engine;
};

/// The pieces as one text.
[[nodiscard]] inline QString joined(const QList<PaintedText> &pieces)
{
    QString text;
    for (const PaintedText &piece : pieces)
        text += piece.text;
    return text;
}

/// Whether every piece is of that weight and color.
[[nodiscard]] inline bool areAll(const QList<PaintedText> &pieces, int weight, const QColor &color)
{
    return std::all_of(pieces.begin(), pieces.end(),
        [&](const PaintedText &piece) { return piece.weight == weight && piece.color.rgba() == color.rgba(); });
}

} // namespace moorline::test
