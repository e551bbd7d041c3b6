#import "platform/macos/MacScreens.h"

#import "platform/macos/Conversions.h"

#import <AppKit/AppKit.h>

namespace moorline {

namespace {

Screen describe(NSScreen *screen)
{
    const NSEdgeInsets insets = screen.safeAreaInsets;
    return {
        .frame = toQRectF(screen.frame),
        .visibleFrame = toQRectF(screen.visibleFrame),
        .safeAreaInsets = QMarginsF(insets.left, insets.top, insets.right, insets.bottom),
        .scale = screen.backingScaleFactor,
    };
}

} // namespace

MacScreens::MacScreens()
    : m_parametersObserver(NSNotificationCenter.defaultCenter, NSApplicationDidChangeScreenParametersNotification,
        [this] { Q_EMIT screensChanged(); })
{
}

QList<Screen> MacScreens::screens() const
{
    QList<Screen> result;
    for (NSScreen *screen in NSScreen.screens)
        result.append(describe(screen));
    return result;
}

} // namespace moorline
