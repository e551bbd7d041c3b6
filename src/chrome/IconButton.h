#pragma once

#include "chrome/BarItem.h"
#include "chrome/DragOffWatcher.h"
#include "platform/Icons.h"
#include "theme/IconImage.h"
#include "theme/SpringMotion.h"

namespace moorline {

/// An icon of the bar: it grows while the pointer is on it, and more while something is held over it that it takes. One
/// that is draggable can be carried to another place in its row, and off the bar, and is faint meanwhile.
class IconButton : public BarItem {
    Q_OBJECT
public:
    /// Everything lent here outlives the button.
    struct Context {
        IconCache &icons;
        Clock &clock;
        const Pointer &pointer;
        DragOffWatcher::PanelFrame panelFrame;
    };

    IconButton(const Context &context, QGraphicsItem *parent);

    /// How far above and below itself it takes the pointer: beyond both edges of the pill, which takes no input
    /// outside of itself.
    static constexpr qreal reach = 24;

    /// What a button at this icon size takes, in points: there is place for a dot below the icon.
    [[nodiscard]] static QSizeF sizeFor(qreal iconSize);

    /// What it is known by in its row.
    [[nodiscard]] virtual QString id() const = 0;
    void setIconSize(qreal size);
    /// Its place in the row, taken at once; a button on its way there goes on.
    void placeAt(qreal x);
    /// Slides there.
    void slideTo(qreal x);
    /// How large and how opaque the icon is drawn now; 1 and 1 at rest.
    [[nodiscard]] double iconScale() const { return m_scale.value(); }
    [[nodiscard]] double iconOpacity() const { return m_opacity.value(); }

    /// Higher than what is painted: a pointer that is thrown at the edge of the screen hits as well.
    [[nodiscard]] QRectF boundingRect() const override;
    [[nodiscard]] QPainterPath shape() const override;
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;

Q_SIGNALS:
    /// It was carried away and let go, off the bar or not.
    void letGo(bool isOff);
    /// It was carried away and is to be where it was, wherever the button is let go.
    void carryingCancelled();

protected:
    /// The spring swings beyond where it leads, from wherever it was sent there.
    static constexpr qreal largestScale = 1.2;

    void showIcon(IconKind kind, const QString &subject);
    [[nodiscard]] qreal iconSize() const { return m_iconSize; }
    /// Whether there is an icon to paint.
    [[nodiscard]] bool hasIcon() const { return !m_icon.image().isNull(); }
    /// Where the icon is at rest.
    [[nodiscard]] QRectF iconRect() const;
    [[nodiscard]] QRectF dotRect() const;
    /// Everything painted that grows or fades, where it is largest.
    [[nodiscard]] virtual QRectF growingRect() const;
    virtual void iconSizeChanged();
    /// There is no icon of what is to be shown.
    virtual void iconMissing();
    /// Below the icon, which may be faint.
    virtual void paintBehind(QPainter &painter);
    /// On the icon, and as faint.
    virtual void paintOver(QPainter &painter);

    void drag(const QPointF &place) override;
    void dragEnded(DragEnd end) override;

private:
    [[nodiscard]] QRectF touchRect() const;
    void updateScale();
    void paintIcon(QPainter &painter);

    qreal m_iconSize = 46;
    IconKind m_iconKind = IconKind::file;
    QString m_iconSubject;
    IconImage m_icon;
    SpringMotion m_scale;
    SpringMotion m_opacity;
    SpringMotion m_place;
    DragOffWatcher m_watcher;
    /// Whether it was let go off the bar, once that is known of the drag that is under way.
    std::optional<bool> m_wasLetGoOff;
};

/// The same middle, `scale` times as large.
[[nodiscard]] QRectF grown(const QRectF &rect, qreal scale);

} // namespace moorline
