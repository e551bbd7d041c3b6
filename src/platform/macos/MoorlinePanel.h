#pragma once

#import <AppKit/AppKit.h>

#include <QtGlobal>

QT_BEGIN_NAMESPACE
class QWidget;
QT_END_NAMESPACE

/// The window the bar lives in. It never becomes key or main, so a click on the bar leaves the focus where it is.
@interface MoorlinePanel : NSPanel
@end

/// A window above the bar. It becomes key when it is told to, and its application stays inactive all the same.
@interface MoorlinePopupPanel : MoorlinePanel
@end

/// Keeps its one subview as large as itself.
@interface MoorlinePanelContent : NSView
@end

namespace moorline {

/// Puts the widget's view into the content view of a panel. It must not be the content view itself: Qt takes a window
/// whose content view is Qt's for its own.
void embed(QWidget &widget, NSView *content);

} // namespace moorline
