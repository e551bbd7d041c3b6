#pragma once

#include <QList>
#include <QRectF>

namespace moorline {

/// Converts between the device pixels of the X server, which count from the top left of the root window, and the points
/// that the rest of the program and Qt count in. Qt keeps the origin of each screen where it is in device pixels, and
/// divides lengths within it by the screen's scale.
class X11Coordinates final {
public:
    struct Screen {
        /// As QScreen::geometry() has it: the origin in device pixels, the size in points.
        QRect geometry;
        qreal scale = 1;
    };

    /// The first screen is the primary one.
    explicit X11Coordinates(const QList<Screen> &screens);
    /// The screens that Qt knows now.
    [[nodiscard]] static X11Coordinates current();

    /// From device pixels to points, origin at the bottom left of the primary screen.
    [[nodiscard]] QPointF pointFromNative(const QPoint &native) const;
    /// From device pixels to points, origin at the top left of the primary screen.
    [[nodiscard]] QRectF windowBoundsFromNative(const QRect &native) const;

    /// From points, origin at the bottom left of the primary screen, to Qt's coordinates, and back.
    [[nodiscard]] QRectF qtFromFrame(const QRectF &frame) const;
    [[nodiscard]] QRectF frameFromQt(const QRectF &qt) const;
    /// The same to device pixels, by the primary screen's scale also beyond its edges.
    [[nodiscard]] QRect nativeFromFrame(const QRectF &frame) const;

    /// In device pixels.
    [[nodiscard]] QRect nativePrimary() const;
    [[nodiscard]] QList<QRect> nativeScreens() const;
    [[nodiscard]] qreal primaryScale() const;

private:
    [[nodiscard]] const Screen &screenAt(const QPoint &native) const;

    QList<Screen> m_screens;
};

} // namespace moorline
