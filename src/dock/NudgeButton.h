#pragma once

#include "chrome/BarItem.h"

namespace moorline {

class Symbols;

/// The button of the nudge: a capsule with an arrow and a text.
class NudgeButton final : public BarItem {
    Q_OBJECT
public:
    /// `symbols` outlives the button.
    NudgeButton(const Symbols &symbols, const QString &text, QGraphicsItem *parent = nullptr);

    /// The size at which nothing is cut off, in points.
    [[nodiscard]] QSizeF naturalSize() const;

    [[nodiscard]] QPainterPath shape() const override;
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;

private:
    const Symbols &m_symbols;
    QString m_text;
};

} // namespace moorline
