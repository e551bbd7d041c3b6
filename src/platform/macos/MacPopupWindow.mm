#import "platform/macos/MacPopupWindow.h"

#import "platform/macos/Conversions.h"

namespace moorline {

namespace {

constexpr NSWindowCollectionBehavior onEverySpace = NSWindowCollectionBehaviorCanJoinAllSpaces
    | NSWindowCollectionBehaviorStationary | NSWindowCollectionBehaviorIgnoresCycle
    | NSWindowCollectionBehaviorFullScreenAuxiliary;

MoorlinePopupPanel *makePanel(const QSizeF &size)
{
    const CGRect rect = toCGRect(QRectF(QPointF(), size));
    MoorlinePopupPanel *panel = [[MoorlinePopupPanel alloc] initWithContentRect:rect
                                                                      styleMask:NSWindowStyleMaskNonactivatingPanel
                                                                        backing:NSBackingStoreBuffered
                                                                          defer:NO];
    panel.contentView = [[MoorlinePanelContent alloc] initWithFrame:rect];
    panel.level = NSPopUpMenuWindowLevel;
    panel.collectionBehavior = onEverySpace;
    return panel;
}

} // namespace

MacPopupWindow::MacPopupWindow(QWidget &window, PopupKind kind)
    : m_panel(makePanel(window.size()))
    , m_widget(&window)
{
    window.setWindowFlags(Qt::Window | Qt::FramelessWindowHint | Qt::NoDropShadowWindowHint);
    embed(window, m_panel.contentView);
    if (kind == PopupKind::helpTag)
        m_panel.ignoresMouseEvents = YES;
    else
        m_pointer = std::make_unique<PanelPointer>(m_panel, window);
}

MacPopupWindow::~MacPopupWindow()
{
    m_pointer.reset();
    [m_panel close];
}

void MacPopupWindow::setFrame(const QRectF &frame)
{
    [m_panel setFrame:toCGRect(frame) display:YES];
    if (!m_pointer)
        return;
    QPainterPath whole;
    whole.addRect(QRectF(QPointF(), frame.size()));
    m_pointer->setInteractiveArea(whole);
}

void MacPopupWindow::orderFront()
{
    m_widget->show();
    [m_panel orderFrontRegardless];
}

void MacPopupWindow::takeKeyboard()
{
    [m_panel makeKeyWindow];
    [m_panel makeFirstResponder:m_panel.contentView.subviews.firstObject];
}

void MacPopupWindow::orderOut()
{
    [m_panel orderOut:nil];
    if (m_widget)
        m_widget->hide();
}

} // namespace moorline
