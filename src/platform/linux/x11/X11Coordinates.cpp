#include "platform/linux/x11/X11Coordinates.h"

#include "platform/Screens.h"

#include <QGuiApplication>
#include <QScreen>
#include <algorithm>

namespace moorline {

namespace {

QRect nativeGeometry(const X11Coordinates::Screen &screen)
{
    return {screen.geometry.topLeft(), (QSizeF(screen.geometry.size()) * screen.scale).toSize()};
}

int distance(int value, int first, int last)
{
    return std::max({first - value, value - last, 0});
}

int distance(const QPoint &point, const QRect &rect)
{
    return distance(point.x(), rect.left(), rect.right()) + distance(point.y(), rect.top(), rect.bottom());
}

QPointF toQt(const QPoint &native, const X11Coordinates::Screen &screen)
{
    const QPointF origin = screen.geometry.topLeft();
    return origin + (QPointF(native) - origin) / screen.scale;
}

} // namespace

X11Coordinates::X11Coordinates(const QList<Screen> &screens)
    : m_screens(screens.isEmpty() ? QList<Screen>{Screen()} : screens)
{
}

X11Coordinates X11Coordinates::current()
{
    QList<Screen> screens;
    const QScreen *primary = QGuiApplication::primaryScreen();
    for (const QScreen *screen : QGuiApplication::screens())
        screens.insert(screen == primary ? 0 : screens.size(), {screen->geometry(), screen->devicePixelRatio()});
    return X11Coordinates(screens);
}

QPointF X11Coordinates::pointFromNative(const QPoint &native) const
{
    return frameFromQt({toQt(native, screenAt(native)), QSizeF(0, 0)}).topLeft();
}

QRectF X11Coordinates::windowBoundsFromNative(const QRect &native) const
{
    const Screen &screen = screenAt(native.center());
    const QPointF topLeft = toQt(native.topLeft(), screen) - QPointF(m_screens.first().geometry.topLeft());
    return {topLeft, QSizeF(native.size()) / screen.scale};
}

QRectF X11Coordinates::qtFromFrame(const QRectF &frame) const
{
    const QRect &primary = m_screens.first().geometry;
    return verticallyFlipped(frame, primary.height()).translated(primary.topLeft());
}

QRectF X11Coordinates::frameFromQt(const QRectF &qt) const
{
    const QRect &primary = m_screens.first().geometry;
    return verticallyFlipped(qt.translated(-primary.topLeft()), primary.height());
}

QRect X11Coordinates::nativeFromFrame(const QRectF &frame) const
{
    const Screen &primary = m_screens.first();
    const QRectF flipped = verticallyFlipped(frame, primary.geometry.height());
    const QRectF scaled(flipped.topLeft() * primary.scale, flipped.size() * primary.scale);
    return scaled.toRect().translated(primary.geometry.topLeft());
}

QRect X11Coordinates::nativePrimary() const
{
    return nativeGeometry(m_screens.first());
}

QList<QRect> X11Coordinates::nativeScreens() const
{
    QList<QRect> geometries;
    std::transform(m_screens.begin(), m_screens.end(), std::back_inserter(geometries), nativeGeometry);
    return geometries;
}

qreal X11Coordinates::primaryScale() const
{
    return m_screens.first().scale;
}

/// The screen that the pixel is on or, beyond all of them, next to.
const X11Coordinates::Screen &X11Coordinates::screenAt(const QPoint &native) const
{
    return *std::min_element(m_screens.begin(), m_screens.end(), [&](const Screen &left, const Screen &right) {
        return distance(native, nativeGeometry(left)) < distance(native, nativeGeometry(right));
    });
}

} // namespace moorline
