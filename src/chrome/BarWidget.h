#pragma once

#include "chrome/BarItem.h"

#include <QFont>

namespace moorline {

/// A widget of the bar's row. Its size is always its natural one; the row places it and never stretches it.
/// It repaints itself only when what it shows changed.
class BarWidget : public BarItem {
    Q_OBJECT
public:
    explicit BarWidget(QGraphicsItem *parent = nullptr);

    /// The side of every icon in the bar, in points. Only a widget that consists of icons is concerned.
    virtual void setIconSize(qreal size);

Q_SIGNALS:
    void naturalSizeChanged();
    /// What can be touched in it stands elsewhere now, or is another item.
    void itemsMoved();

protected:
    /// In points. Repaints nothing by itself.
    void setNaturalSize(const QSizeF &size);
    /// Takes the natural size of what is shown anew: texts are in another font now.
    virtual void measure();

    void changeEvent(QEvent *event) override;

private:
    /// That of all texts, when they were last measured.
    QFont m_font;
};

} // namespace moorline
