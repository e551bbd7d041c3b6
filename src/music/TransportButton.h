#pragma once

#include "chrome/BarItem.h"

namespace moorline {

class Symbols;

/// A symbol that tells the player something; faint while the player would not obey.
class TransportButton final : public BarItem {
    Q_OBJECT
public:
    enum class Emphasis { plain, emphasized };

    /// `symbolSize` is that of the text which the symbol goes with, in points. `symbols` outlives the button.
    TransportButton(const Symbols &symbols, qreal symbolSize, Emphasis emphasis, QGraphicsItem *parent);

    /// What a button takes, in points.
    [[nodiscard]] static QSizeF sizeFor(Emphasis emphasis);

    void show(const QString &symbol, const QString &name);
    void setUsable(bool usable);
    [[nodiscard]] const QString &symbol() const { return m_symbol; }

    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;

private:
    const Symbols &m_symbols;
    qreal m_symbolSize;
    Emphasis m_emphasis;
    QString m_symbol;
};

} // namespace moorline
