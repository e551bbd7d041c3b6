#import "platform/macos/MacPanelWindow.h"

#import "platform/macos/Conversions.h"

namespace moorline {

namespace {

static_assert(
    NSWindowCollectionBehavior(CollectionBehavior::canJoinAllSpaces) == NSWindowCollectionBehaviorCanJoinAllSpaces);
static_assert(NSWindowCollectionBehavior(CollectionBehavior::stationary) == NSWindowCollectionBehaviorStationary);
static_assert(NSWindowCollectionBehavior(CollectionBehavior::ignoresCycle) == NSWindowCollectionBehaviorIgnoresCycle);
static_assert(NSWindowCollectionBehavior(CollectionBehavior::fullScreenAuxiliary)
    == NSWindowCollectionBehaviorFullScreenAuxiliary);

MoorlinePanel *makePanel(const QSizeF &size)
{
    const CGRect rect = toCGRect(QRectF(QPointF(), size));
    MoorlinePanel *panel = [[MoorlinePanel alloc] initWithContentRect:rect
                                                            styleMask:NSWindowStyleMaskNonactivatingPanel
                                                              backing:NSBackingStoreBuffered
                                                                defer:NO];
    panel.contentView = [[MoorlinePanelContent alloc] initWithFrame:rect];
    return panel;
}

} // namespace

MacPanelWindow::~MacPanelWindow()
{
    close();
}

void MacPanelWindow::adopt(QWidget &panel)
{
    panel.setWindowFlags(
        Qt::Window | Qt::FramelessWindowHint | Qt::NoDropShadowWindowHint | Qt::WindowDoesNotAcceptFocus);
    m_widget = &panel;
    m_panel = makePanel(panel.size());
    embed(panel, m_panel.contentView);
    m_pointer = std::make_unique<PanelPointer>(m_panel, panel);
}

void MacPanelWindow::setLevel(int level)
{
    m_panel.level = level;
}

int MacPanelWindow::level() const
{
    return int(m_panel.level);
}

void MacPanelWindow::setCollectionBehavior(unsigned behavior)
{
    m_panel.collectionBehavior = behavior;
}

void MacPanelWindow::setFrame(const QRectF &frame)
{
    [m_panel setFrame:toCGRect(frame) display:YES];
    m_pointer->update();
}

QRectF MacPanelWindow::frame() const
{
    return toQRectF(m_panel.frame);
}

QRect MacPanelWindow::accessibleRect(const QRectF &part) const
{
    return part.translated(m_widget->mapToGlobal(QPointF(0, 0))).toAlignedRect();
}

void MacPanelWindow::orderFrontRegardless()
{
    m_widget->show();
    // Showing may have given the view another size than its window.
    [m_panel.contentView resizeSubviewsWithOldSize:m_panel.contentView.bounds.size];
    [m_panel orderFrontRegardless];
}

void MacPanelWindow::setInteractiveArea(const QPainterPath &area)
{
    m_pointer->setInteractiveArea(area);
}

void MacPanelWindow::close()
{
    m_pointer.reset();
    [m_panel close];
}

} // namespace moorline
