#pragma once

#include "theme/Shadow.h"

#include <QString>

QT_BEGIN_NAMESPACE
class QPainter;
QT_END_NAMESPACE

namespace moorline {

/// The badge of an application: a short text on a red capsule over the top trailing corner of its icon.
class BadgeView {
public:
    BadgeView();

    /// The badge as it is shown: a whole number above 999 is "999+", other texts have four characters at most.
    [[nodiscard]] static QString display(const QString &badge);

    /// No badge at all when empty.
    void setBadge(const QString &badge) { m_text = display(badge); }
    /// The side of the icon, in points.
    void setIconSize(qreal size) { m_iconSize = size; }
    [[nodiscard]] const QString &text() const { return m_text; }

    /// Where the capsule lies, in points from the icon's top left corner. Empty without a badge.
    [[nodiscard]] QRectF capsule() const;
    /// Everything it paints, its shadow included, in the same coordinates.
    [[nodiscard]] QRectF boundingRect() const;
    /// The painter's origin is the icon's top left corner.
    void paint(QPainter &painter);

private:
    [[nodiscard]] qreal fontSize() const;

    QString m_text;
    qreal m_iconSize = 0;
    Shadow m_shadow;
};

} // namespace moorline
