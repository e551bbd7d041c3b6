#pragma once

#include <QGraphicsWidget>

namespace moorline {

/// A widget of the bar's row. Its size is always its natural one; the row places it and never stretches it.
/// It repaints itself only when what it shows changed.
class BarWidget : public QGraphicsWidget {
    Q_OBJECT
public:
    explicit BarWidget(QGraphicsItem *parent = nullptr);

Q_SIGNALS:
    void naturalSizeChanged();
    /// What there is to tell about the widget is another text now.
    void helpTextChanged();

protected:
    /// In points. Repaints nothing by itself.
    void setNaturalSize(const QSizeF &size);
    /// What a pointer that rests on the widget is told.
    void setHelpText(const QString &text);
};

} // namespace moorline
