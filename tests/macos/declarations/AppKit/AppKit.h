#pragma once

#include <Foundation/Foundation.h>

@class NSDraggingItem;
@class NSDraggingSession;
@class NSEvent;
@class NSGraphicsContext;
@class NSImage;
@class NSMenu;
@class NSRunningApplication;
@class NSWindow;

// Application and workspace

// https://developer.apple.com/documentation/appkit/nsapplication/activationpolicy-swift.enum
enum NSApplicationActivationPolicy : NSInteger {
    NSApplicationActivationPolicyRegular,
    NSApplicationActivationPolicyAccessory,
    NSApplicationActivationPolicyProhibited,
};

// https://developer.apple.com/documentation/appkit/nsapplication
@interface NSApplication : NSObject
@property (getter=isActive, readonly) BOOL active;
// https://developer.apple.com/documentation/appkit/nsapplication/currentevent
@property (readonly, strong) NSEvent *currentEvent;
// https://developer.apple.com/documentation/appkit/nsapplication/postevent(_:atstart:)
- (void)postEvent:(NSEvent *)event atStart:(BOOL)flag;
// https://developer.apple.com/documentation/appkit/nsapplication/setactivationpolicy(_:)
- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)activationPolicy;
@end

// https://developer.apple.com/documentation/appkit/nsapp
extern "C" __kindof NSApplication *NSApp;

// https://developer.apple.com/documentation/appkit/nsapplication/didchangescreenparametersnotification
extern "C" const NSNotificationName NSApplicationDidChangeScreenParametersNotification;

// https://developer.apple.com/documentation/appkit/nsapplication/activationoptions
typedef NSUInteger NSApplicationActivationOptions;
enum : NSApplicationActivationOptions {
    NSApplicationActivateAllWindows = 1 << 0,
};

// https://developer.apple.com/documentation/appkit/nsrunningapplication
@interface NSRunningApplication : NSObject
// https://developer.apple.com/documentation/appkit/nsrunningapplication/processidentifier
// -1 for one that has none.
@property (readonly) pid_t processIdentifier;
@property (readonly, copy) NSString *bundleIdentifier;
@property (readonly, copy) NSURL *bundleURL;
@property (readonly) NSApplicationActivationPolicy activationPolicy;
@property (readonly, getter=isTerminated) BOOL terminated;
// https://developer.apple.com/documentation/appkit/nsrunningapplication/init(processidentifier:)
+ (instancetype)runningApplicationWithProcessIdentifier:(pid_t)pid;
// https://developer.apple.com/documentation/appkit/nsrunningapplication/activate(options:)
- (BOOL)activateWithOptions:(NSApplicationActivationOptions)options;
// https://developer.apple.com/documentation/appkit/nsrunningapplication/terminate()
- (BOOL)terminate;
@end

// https://developer.apple.com/documentation/appkit/nsworkspace/openconfiguration
API_AVAILABLE(macos(10.15))
@interface NSWorkspaceOpenConfiguration : NSObject
// https://developer.apple.com/documentation/appkit/nsworkspaceopenconfiguration/configuration
+ (instancetype)configuration;
// https://developer.apple.com/documentation/appkit/nsworkspace/openconfiguration/activates
@property BOOL activates;
@end

// https://developer.apple.com/documentation/appkit/nsworkspace
@interface NSWorkspace : NSObject
@property (class, readonly, strong) NSWorkspace *sharedWorkspace;
// https://developer.apple.com/documentation/appkit/nsworkspace/notificationcenter
@property (readonly, strong) NSNotificationCenter *notificationCenter;
// https://developer.apple.com/documentation/appkit/nsworkspace/open(_:)
- (BOOL)openURL:(NSURL *)url;
// https://developer.apple.com/documentation/appkit/nsworkspace/icon(forfile:)
- (NSImage *)iconForFile:(NSString *)fullPath;
// https://developer.apple.com/documentation/appkit/nsworkspace/runningapplications
@property (readonly, copy) NSArray<NSRunningApplication *> *runningApplications;
// https://developer.apple.com/documentation/appkit/nsworkspace/urlforapplication(withbundleidentifier:)
- (NSURL *)URLForApplicationWithBundleIdentifier:(NSString *)bundleIdentifier;
// https://developer.apple.com/documentation/appkit/nsworkspace/openapplication(at:configuration:completionhandler:)
// The handler runs on a concurrent queue.
- (void)openApplicationAtURL:(NSURL *)applicationURL
               configuration:(NSWorkspaceOpenConfiguration *)configuration
           completionHandler:(void (^)(NSRunningApplication *app, NSError *error))completionHandler
    API_AVAILABLE(macos(10.15));
// https://developer.apple.com/documentation/appkit/nsworkspace/open(_:withapplicationat:configuration:completionhandler:)
// The handler runs on a concurrent queue.
- (void)openURLs:(NSArray<NSURL *> *)urls
    withApplicationAtURL:(NSURL *)applicationURL
           configuration:(NSWorkspaceOpenConfiguration *)configuration
       completionHandler:(void (^)(NSRunningApplication *app, NSError *error))completionHandler
    API_AVAILABLE(macos(10.15));
// https://developer.apple.com/documentation/appkit/nsworkspace/activatefileviewerselecting(_:)
- (void)activateFileViewerSelectingURLs:(NSArray<NSURL *> *)fileURLs;
// https://developer.apple.com/documentation/appkit/nsworkspace/selectfile(_:infileviewerrootedatpath:)
- (BOOL)selectFile:(NSString *)fullPath inFileViewerRootedAtPath:(NSString *)rootFullPath;
@end

// https://developer.apple.com/documentation/appkit/nsworkspace/activespacedidchangenotification
extern "C" const NSNotificationName NSWorkspaceActiveSpaceDidChangeNotification;
// https://developer.apple.com/documentation/appkit/nsworkspace/didactivateapplicationnotification
extern "C" const NSNotificationName NSWorkspaceDidActivateApplicationNotification;
// https://developer.apple.com/documentation/appkit/nsworkspace/didwakenotification
extern "C" const NSNotificationName NSWorkspaceDidWakeNotification;
// https://developer.apple.com/documentation/appkit/nsworkspace/didhideapplicationnotification
extern "C" const NSNotificationName NSWorkspaceDidHideApplicationNotification;
// https://developer.apple.com/documentation/appkit/nsworkspace/didunhideapplicationnotification
extern "C" const NSNotificationName NSWorkspaceDidUnhideApplicationNotification;
// https://developer.apple.com/documentation/appkit/nsworkspace/didlaunchapplicationnotification
// Not posted for background applications.
extern "C" const NSNotificationName NSWorkspaceDidLaunchApplicationNotification;
// https://developer.apple.com/documentation/appkit/nsworkspace/didterminateapplicationnotification
extern "C" const NSNotificationName NSWorkspaceDidTerminateApplicationNotification;
// https://developer.apple.com/documentation/appkit/nsworkspace/applicationuserinfokey
extern "C" NSString *const NSWorkspaceApplicationKey;

// Screens

// https://developer.apple.com/documentation/appkit/nsscreen
@interface NSScreen : NSObject
@property (class, readonly, copy) NSArray<NSScreen *> *screens;
@property (readonly) NSRect frame;
@property (readonly) NSRect visibleFrame;
@property (readonly) CGFloat backingScaleFactor;
// https://developer.apple.com/documentation/appkit/nsscreen/safeareainsets
@property (readonly) NSEdgeInsets safeAreaInsets API_AVAILABLE(macos(12.0));
@end

// Events

// https://developer.apple.com/documentation/appkit/nsevent/eventtype
enum NSEventType : NSUInteger {
    NSEventTypeLeftMouseDown = 1,
    NSEventTypeLeftMouseUp = 2,
    NSEventTypeRightMouseDown = 3,
    NSEventTypeRightMouseUp = 4,
    NSEventTypeMouseMoved = 5,
    NSEventTypeLeftMouseDragged = 6,
    NSEventTypeRightMouseDragged = 7,
    NSEventTypeKeyDown = 10,
    NSEventTypeOtherMouseDown = 25,
    NSEventTypeOtherMouseUp = 26,
    NSEventTypeOtherMouseDragged = 27,
};

// https://developer.apple.com/documentation/appkit/nsevent/eventtypemask
typedef unsigned long long NSEventMask;
enum : NSEventMask {
    NSEventMaskLeftMouseDown = 1ULL << NSEventTypeLeftMouseDown,
    NSEventMaskRightMouseDown = 1ULL << NSEventTypeRightMouseDown,
    NSEventMaskOtherMouseDown = 1ULL << NSEventTypeOtherMouseDown,
    NSEventMaskLeftMouseUp = 1ULL << NSEventTypeLeftMouseUp,
    NSEventMaskRightMouseUp = 1ULL << NSEventTypeRightMouseUp,
    NSEventMaskMouseMoved = 1ULL << NSEventTypeMouseMoved,
    NSEventMaskLeftMouseDragged = 1ULL << NSEventTypeLeftMouseDragged,
    NSEventMaskRightMouseDragged = 1ULL << NSEventTypeRightMouseDragged,
    NSEventMaskKeyDown = 1ULL << NSEventTypeKeyDown,
    NSEventMaskOtherMouseUp = 1ULL << NSEventTypeOtherMouseUp,
    NSEventMaskOtherMouseDragged = 1ULL << NSEventTypeOtherMouseDragged,
};

// https://developer.apple.com/documentation/appkit/nsevent/modifierflags-swift.struct
typedef NSUInteger NSEventModifierFlags;
enum : NSEventModifierFlags {
    NSEventModifierFlagShift = 1 << 17,
    NSEventModifierFlagControl = 1 << 18,
    NSEventModifierFlagOption = 1 << 19,
    NSEventModifierFlagCommand = 1 << 20,
};

// https://developer.apple.com/documentation/appkit/nsevent
@interface NSEvent : NSObject
// https://developer.apple.com/documentation/appkit/nsevent/mouseevent(with:location:modifierflags:timestamp:windownumber:context:eventnumber:clickcount:pressure:)
// The location is in the window's own coordinates.
+ (NSEvent *)mouseEventWithType:(NSEventType)type
                       location:(NSPoint)location
                  modifierFlags:(NSEventModifierFlags)flags
                      timestamp:(NSTimeInterval)time
                   windowNumber:(NSInteger)wNum
                        context:(NSGraphicsContext *)unusedPassNil
                    eventNumber:(NSInteger)eNum
                     clickCount:(NSInteger)cNum
                       pressure:(float)pressure;
// https://developer.apple.com/documentation/appkit/nsevent/modifierflags-swift.type.property
@property (class, readonly) NSEventModifierFlags modifierFlags;
@property (readonly) NSEventType type;
@property (readonly) NSEventModifierFlags modifierFlags;
@property (readonly) NSTimeInterval timestamp;
@property (readonly) NSInteger windowNumber;
@property (readonly) NSInteger eventNumber;
@property (readonly) NSInteger clickCount;
@property (readonly) NSPoint locationInWindow;
// https://developer.apple.com/documentation/appkit/nsevent/mouselocation
@property (class, readonly) NSPoint mouseLocation;
// https://developer.apple.com/documentation/appkit/nsevent/pressedmousebuttons
@property (class, readonly) NSUInteger pressedMouseButtons;
// https://developer.apple.com/documentation/appkit/nsevent/keycode
@property (readonly) unsigned short keyCode;
// https://developer.apple.com/documentation/appkit/nsevent/addglobalmonitorforevents(matching:handler:)
+ (id)addGlobalMonitorForEventsMatchingMask:(NSEventMask)mask handler:(void (^)(NSEvent *event))block;
// https://developer.apple.com/documentation/appkit/nsevent/addlocalmonitorforevents(matching:handler:)
+ (id)addLocalMonitorForEventsMatchingMask:(NSEventMask)mask handler:(NSEvent * (^)(NSEvent *event))block;
// https://developer.apple.com/documentation/appkit/nsevent/removemonitor(_:)
+ (void)removeMonitor:(id)eventMonitor;
@end

// What is dragged

// https://developer.apple.com/documentation/appkit/nsdragoperation
typedef NSUInteger NSDragOperation;
enum : NSDragOperation {
    NSDragOperationCopy = 1,
    NSDragOperationLink = 2,
    NSDragOperationGeneric = 4,
};

// https://developer.apple.com/documentation/appkit/nsdraggingcontext
enum NSDraggingContext : NSInteger {
    NSDraggingContextOutsideApplication = 0,
    NSDraggingContextWithinApplication,
};

// https://developer.apple.com/documentation/appkit/nsdraggingsource
@protocol NSDraggingSource <NSObject>
// https://developer.apple.com/documentation/appkit/nsdraggingsource/draggingsession(_:sourceoperationmaskfor:)
- (NSDragOperation)draggingSession:(NSDraggingSession *)session
    sourceOperationMaskForDraggingContext:(NSDraggingContext)context;
@optional
// https://developer.apple.com/documentation/appkit/nsdraggingsource/draggingsession(_:endedat:operation:)
- (void)draggingSession:(NSDraggingSession *)session
           endedAtPoint:(NSPoint)screenPoint
              operation:(NSDragOperation)operation;
@end

// https://developer.apple.com/documentation/appkit/nspasteboardwriting
@protocol NSPasteboardWriting <NSObject>
@end

// https://developer.apple.com/documentation/foundation/nsurl
@interface NSURL (NSPasteboardSupport) <NSPasteboardWriting>
@end

// https://developer.apple.com/documentation/appkit/nsdraggingitem
@interface NSDraggingItem : NSObject
- (instancetype)init NS_UNAVAILABLE;
// https://developer.apple.com/documentation/appkit/nsdraggingitem/init(pasteboardwriter:)
- (instancetype)initWithPasteboardWriter:(id<NSPasteboardWriting>)pasteboardWriter NS_DESIGNATED_INITIALIZER;
// https://developer.apple.com/documentation/appkit/nsdraggingitem/setdraggingframe(_:contents:)
// In the coordinates of the view that the session begins in.
- (void)setDraggingFrame:(NSRect)frame contents:(id)contents;
@end

// https://developer.apple.com/documentation/appkit/nsdraggingsession
@interface NSDraggingSession : NSObject
// https://developer.apple.com/documentation/appkit/nsdraggingsession/animatestostartingpositionsoncancelorfail
@property BOOL animatesToStartingPositionsOnCancelOrFail;
@end

// Views and windows

// https://developer.apple.com/documentation/appkit/nscolor
@interface NSColor : NSObject
@property (class, readonly, strong) NSColor *clearColor;
@property (class, readonly, strong) NSColor *blackColor;
@end

// https://developer.apple.com/documentation/appkit/nsresponder
@interface NSResponder : NSObject
- (instancetype)init NS_DESIGNATED_INITIALIZER;
- (instancetype)initWithCoder:(NSCoder *)coder NS_DESIGNATED_INITIALIZER;
@end

// https://developer.apple.com/documentation/appkit/nsview
@interface NSView : NSResponder
@property NSRect frame;
@property NSRect bounds;
@property (copy) NSArray<__kindof NSView *> *subviews;
// https://developer.apple.com/documentation/appkit/nsview/window
@property (readonly) NSWindow *window;
- (instancetype)initWithFrame:(NSRect)frameRect NS_DESIGNATED_INITIALIZER;
- (instancetype)initWithCoder:(NSCoder *)coder NS_DESIGNATED_INITIALIZER;
- (void)addSubview:(NSView *)view;
// https://developer.apple.com/documentation/appkit/nsview/convert(_:to:)-6u9ir
- (NSPoint)convertPoint:(NSPoint)point toView:(NSView *)view;
// https://developer.apple.com/documentation/appkit/nsview/begindraggingsession(with:event:source:)
// Nil where it cannot begin.
- (NSDraggingSession *)beginDraggingSessionWithItems:(NSArray<NSDraggingItem *> *)items
                                               event:(NSEvent *)event
                                              source:(id<NSDraggingSource>)source;
// https://developer.apple.com/documentation/appkit/nsview/tooltip
@property (copy) NSString *toolTip;
// https://developer.apple.com/documentation/appkit/nsview/resizesubviews(witholdsize:)
- (void)resizeSubviewsWithOldSize:(NSSize)oldSize;
@end

// https://developer.apple.com/documentation/appkit/nswindow/stylemask-swift.struct
typedef NSUInteger NSWindowStyleMask;
enum : NSWindowStyleMask {
    NSWindowStyleMaskBorderless = 0,
    NSWindowStyleMaskTitled = 1 << 0,
    // https://developer.apple.com/documentation/appkit/nswindow/stylemask-swift.struct/nonactivatingpanel
    NSWindowStyleMaskNonactivatingPanel = 1 << 7,
};

// https://developer.apple.com/documentation/appkit/nswindow/backingstoretype
enum NSBackingStoreType : NSUInteger {
    NSBackingStoreBuffered = 2,
};

// https://developer.apple.com/documentation/appkit/nswindow/collectionbehavior-swift.struct
typedef NSUInteger NSWindowCollectionBehavior;
enum : NSWindowCollectionBehavior {
    NSWindowCollectionBehaviorCanJoinAllSpaces = 1 << 0,
    NSWindowCollectionBehaviorStationary = 1 << 4,
    NSWindowCollectionBehaviorIgnoresCycle = 1 << 6,
    NSWindowCollectionBehaviorFullScreenAuxiliary = 1 << 8,
};

// https://developer.apple.com/documentation/appkit/nswindow/animationbehavior-swift.enum
enum NSWindowAnimationBehavior : NSInteger {
    NSWindowAnimationBehaviorDefault = 0,
    NSWindowAnimationBehaviorNone = 2,
};

// https://developer.apple.com/documentation/appkit/nswindow/level-swift.struct
typedef NSInteger NSWindowLevel;

// https://developer.apple.com/documentation/appkit/nswindow/level-swift.struct/popupmenu
static const NSWindowLevel NSPopUpMenuWindowLevel = 101;

// https://developer.apple.com/documentation/appkit/nswindow
@interface NSWindow : NSResponder
@property (readonly) NSRect frame;
// https://developer.apple.com/documentation/appkit/nswindow/windownumber
@property (readonly) NSInteger windowNumber;
@property NSWindowLevel level;
@property NSWindowCollectionBehavior collectionBehavior;
@property NSWindowAnimationBehavior animationBehavior;
@property (strong) __kindof NSView *contentView;
@property (copy) NSColor *backgroundColor;
@property (getter=isOpaque) BOOL opaque;
@property BOOL hasShadow;
@property BOOL hidesOnDeactivate;
@property (getter=isMovableByWindowBackground) BOOL movableByWindowBackground;
@property (getter=isReleasedWhenClosed) BOOL releasedWhenClosed;
@property (getter=isExcludedFromWindowsMenu) BOOL excludedFromWindowsMenu;
// https://developer.apple.com/documentation/appkit/nswindow/ignoresmouseevents
@property BOOL ignoresMouseEvents;
// https://developer.apple.com/documentation/appkit/nswindow/acceptsmousemovedevents
@property BOOL acceptsMouseMovedEvents;
@property (readonly) BOOL canBecomeKeyWindow;
@property (readonly) BOOL canBecomeMainWindow;
// https://developer.apple.com/documentation/appkit/nswindow/init(contentrect:stylemask:backing:defer:)
- (instancetype)initWithContentRect:(NSRect)contentRect
                          styleMask:(NSWindowStyleMask)style
                            backing:(NSBackingStoreType)backingStoreType
                              defer:(BOOL)flag NS_DESIGNATED_INITIALIZER;
- (instancetype)initWithCoder:(NSCoder *)coder NS_UNAVAILABLE;
// https://developer.apple.com/documentation/appkit/nswindow/setframe(_:display:)
- (void)setFrame:(NSRect)frameRect display:(BOOL)flag;
// https://developer.apple.com/documentation/appkit/nswindow/orderfrontregardless()
- (void)orderFrontRegardless;
// https://developer.apple.com/documentation/appkit/nswindow/orderout(_:)
- (void)orderOut:(id)sender;
// https://developer.apple.com/documentation/appkit/nswindow/makekey()
- (void)makeKeyWindow;
// https://developer.apple.com/documentation/appkit/nswindow/makefirstresponder(_:)
- (BOOL)makeFirstResponder:(NSResponder *)responder;
// https://developer.apple.com/documentation/appkit/nswindow/close()
- (void)close;
@end

// https://developer.apple.com/documentation/appkit/nspanel
@interface NSPanel : NSWindow
@end

// Menus and the menu bar

// https://developer.apple.com/documentation/appkit/nscontrol/statevalue
typedef NSInteger NSControlStateValue;
static const NSControlStateValue NSControlStateValueOff = 0;
static const NSControlStateValue NSControlStateValueOn = 1;

// https://developer.apple.com/documentation/appkit/nsuserinterfaceitemidentifier
typedef NSString *NSUserInterfaceItemIdentifier;

// https://developer.apple.com/documentation/appkit/nsmenuitem
@interface NSMenuItem : NSObject
// https://developer.apple.com/documentation/appkit/nsmenuitem/separator()
+ (NSMenuItem *)separatorItem;
// https://developer.apple.com/documentation/appkit/nsmenuitem/init(title:action:keyequivalent:)
- (instancetype)initWithTitle:(NSString *)string
                       action:(SEL)selector
                keyEquivalent:(NSString *)charCode NS_DESIGNATED_INITIALIZER;
@property NSControlStateValue state;
@property (getter=isEnabled) BOOL enabled;
@property (strong) NSImage *image;
@property (copy) NSString *keyEquivalent;
// https://developer.apple.com/documentation/appkit/nsmenuitem/keyequivalentmodifiermask
@property NSEventModifierFlags keyEquivalentModifierMask;
// https://developer.apple.com/documentation/appkit/nsmenuitem/target
@property (weak) id target;
@property SEL action;
// https://developer.apple.com/documentation/appkit/nsmenuitem/representedobject
@property (strong) id representedObject;
// https://developer.apple.com/documentation/appkit/nsuserinterfaceitemidentification/identifier
@property (copy) NSUserInterfaceItemIdentifier identifier;
@end

// https://developer.apple.com/documentation/appkit/nsmenudelegate
@protocol NSMenuDelegate <NSObject>
@optional
// https://developer.apple.com/documentation/appkit/nsmenudelegate/menuneedsupdate(_:)
- (void)menuNeedsUpdate:(NSMenu *)menu;
@end

// https://developer.apple.com/documentation/appkit/nsmenu
@interface NSMenu : NSObject
- (instancetype)initWithTitle:(NSString *)title NS_DESIGNATED_INITIALIZER;
// https://developer.apple.com/documentation/appkit/nsmenu/delegate
@property (weak) id<NSMenuDelegate> delegate;
// https://developer.apple.com/documentation/appkit/nsmenu/autoenablesitems
@property BOOL autoenablesItems;
// https://developer.apple.com/documentation/appkit/nsmenu/size
@property (readonly) NSSize size;
// https://developer.apple.com/documentation/appkit/nsmenu/popup(positioning:at:in:)
// Returns when the menu has closed. Without an item the top left of the menu is at the location, which is on the screen
// where there is no view.
- (BOOL)popUpMenuPositioningItem:(NSMenuItem *)item atLocation:(NSPoint)location inView:(NSView *)view;
// https://developer.apple.com/documentation/appkit/nsmenu/canceltrackingwithoutanimation()
- (void)cancelTrackingWithoutAnimation;
- (void)addItem:(NSMenuItem *)newItem;
- (void)removeAllItems;
@end

// https://developer.apple.com/documentation/appkit/nsbutton
@interface NSButton : NSView
@property (strong) NSImage *image;
@end

// https://developer.apple.com/documentation/appkit/nsstatusbarbutton
@interface NSStatusBarButton : NSButton
@end

// https://developer.apple.com/documentation/appkit/nsstatusitem
@interface NSStatusItem : NSObject
// https://developer.apple.com/documentation/appkit/nsstatusitem/button
@property (readonly, strong) NSStatusBarButton *button;
// https://developer.apple.com/documentation/appkit/nsstatusitem/menu
@property (strong) NSMenu *menu;
@end

// https://developer.apple.com/documentation/appkit/nsstatusitem/squarelength
static const CGFloat NSSquareStatusItemLength = -2.0;

// https://developer.apple.com/documentation/appkit/nsstatusbar
@interface NSStatusBar : NSObject
@property (class, readonly, strong) NSStatusBar *systemStatusBar;
// https://developer.apple.com/documentation/appkit/nsstatusbar/statusitem(withlength:)
- (NSStatusItem *)statusItemWithLength:(CGFloat)length;
- (void)removeStatusItem:(NSStatusItem *)item;
@end

// Images

// https://developer.apple.com/documentation/appkit/nsfont/weight
typedef CGFloat NSFontWeight;
// https://developer.apple.com/documentation/appkit/nsfont/weight/regular
extern "C" const NSFontWeight NSFontWeightRegular;
// https://developer.apple.com/documentation/appkit/nsfont/weight/semibold
extern "C" const NSFontWeight NSFontWeightSemibold;

// https://developer.apple.com/documentation/appkit/nsimage/symbolconfiguration-swift.class
API_AVAILABLE(macos(11.0))
@interface NSImageSymbolConfiguration : NSObject
+ (instancetype)configurationWithPointSize:(CGFloat)pointSize weight:(NSFontWeight)weight;
// https://developer.apple.com/documentation/appkit/nsimage/symbolconfiguration-swift.class/init(hierarchicalcolor:)
+ (instancetype)configurationWithHierarchicalColor:(NSColor *)hierarchicalColor API_AVAILABLE(macos(12.0));
// https://developer.apple.com/documentation/appkit/nsimage/symbolconfiguration-swift.class/applying(_:)
- (instancetype)configurationByApplyingConfiguration:(NSImageSymbolConfiguration *)configuration
    API_AVAILABLE(macos(12.0));
@end

// https://developer.apple.com/documentation/appkit/nsimage
@interface NSImage : NSObject
@property NSSize size;
// https://developer.apple.com/documentation/appkit/nsimage/istemplate
// A property whose name is a keyword in this language.
- (void)setTemplate:(BOOL)isTemplate;
// https://developer.apple.com/documentation/appkit/nsimage/1520015-imagenamed
+ (NSImage *)imageNamed:(NSString *)name;
// https://developer.apple.com/documentation/appkit/nsimage/init(cgimage:size:)
- (instancetype)initWithCGImage:(struct CGImage *)cgImage size:(NSSize)size;
// https://developer.apple.com/documentation/appkit/nsimage/init(systemsymbolname:accessibilitydescription:)
+ (instancetype)imageWithSystemSymbolName:(NSString *)name
                 accessibilityDescription:(NSString *)description API_AVAILABLE(macos(11.0));
// https://developer.apple.com/documentation/appkit/nsimage/withsymbolconfiguration(_:)
- (NSImage *)imageWithSymbolConfiguration:(NSImageSymbolConfiguration *)configuration API_AVAILABLE(macos(11.0));
// https://developer.apple.com/documentation/appkit/nsimage/draw(in:)
- (void)drawInRect:(NSRect)rect;
@end

// https://developer.apple.com/documentation/appkit/nsgraphicscontext
@interface NSGraphicsContext : NSObject
@property (class, strong) NSGraphicsContext *currentContext;
// https://developer.apple.com/documentation/appkit/nsgraphicscontext/init(cgcontext:flipped:)-9cbad
+ (NSGraphicsContext *)graphicsContextWithCGContext:(CGContextRef)graphicsPort flipped:(BOOL)initialFlippedState;
+ (void)saveGraphicsState;
+ (void)restoreGraphicsState;
@end
