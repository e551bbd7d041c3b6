#include "chrome/BarStage.h"

#include "chrome/BarDrag.h"
#include "chrome/HelpTag.h"
#include "chrome/MenuView.h"
#include "chrome/Popover.h"
#include "chrome/PopupPlacement.h"
#include "platform/PanelWindow.h"
#include "platform/Pointer.h"

#include <QtMath>
#include <algorithm>

namespace moorline {

namespace {

/// White text has to be readable on it.
constexpr int highlightDarkness = 160;

} // namespace

BarStage::BarStage(Context context, QObject *parent)
    : QObject(parent)
    , m_context(context)
    , m_help(std::make_unique<HelpTag>(context.windows, context.clock))
{
    connect(&context.screens, &Screens::screensChanged, this, [this] {
        hideHelp();
        close();
    });
}

BarStage::~BarStage()
{
    close();
    for (const QPointer<BarPopup> &popup : m_closed)
        delete popup;
}

void BarStage::openMenu(const BarAnchor &anchor, const Menu &menu)
{
    if (!makeRoomFor(anchor) || openSystemMenu(anchor, menu))
        return;
    const QColor highlight = m_accent.darker(highlightDarkness);
    open(anchor, std::make_unique<MenuView>(m_context.windows, m_context.symbols, menu, highlight));
}

void BarStage::openPopover(const BarAnchor &anchor, std::unique_ptr<PopoverContent> content)
{
    if (makeRoomFor(anchor))
        open(anchor, std::make_unique<Popover>(m_context.windows, std::move(content)));
}

bool BarStage::makeRoomFor(const BarAnchor &anchor)
{
    const bool isAskedTwice = isOpen() && m_anchor == anchor && !anchor.isPlace();
    close();
    hideHelp();
    return !isAskedTwice && !m_context.screens.screens().isEmpty();
}

void BarStage::begin(const BarAnchor &anchor)
{
    m_hold = hold();
    m_anchor = anchor;
    followAnchor();
}

bool BarStage::openSystemMenu(const BarAnchor &anchor, const Menu &menu)
{
    const auto topLeft = [this, anchor](const QSizeF &size) {
        const QRectF frame = frameFor(size, anchor).value_or(QRectF());
        return QPointF(frame.left(), frame.bottom());
    };
    m_systemMenu = m_context.windows.openSystemMenu(menu, topLeft, [this] { close(); });
    if (!m_systemMenu)
        return false;
    begin(anchor);
    Q_EMIT openChanged();
    return true;
}

void BarStage::open(const BarAnchor &anchor, std::unique_ptr<BarPopup> popup)
{
    m_popup = std::move(popup);
    m_wasPointerInMenu = false;
    begin(anchor);
    placePopup();
    m_presses = m_context.windows.watchPresses([this](const QPointF &place) { pressed(place); });
    connect(m_popup.get(), &BarPopup::dismissed, this, &BarStage::close);
    connect(m_popup.get(), &BarPopup::naturalSizeChanged, this, &BarStage::placePopup);
    watchEscape();
    m_popup->orderFront();
    Q_EMIT openChanged();
}

void BarStage::followAnchor()
{
    QGraphicsObject *item = m_anchor->item;
    m_anchorConnections = {connect(item, &QObject::destroyed, this, &BarStage::close),
        connect(item, &QGraphicsObject::visibleChanged, this, [this, item] {
            if (!item->isVisible())
                close();
        })};
    // An item is where what it stands in is.
    for (const QGraphicsObject *mover = item; mover; mover = mover->parentObject()) {
        for (const auto moved : {&QGraphicsObject::xChanged, &QGraphicsObject::yChanged, &QGraphicsObject::widthChanged,
                 &QGraphicsObject::heightChanged})
            m_anchorConnections.push_back(connect(mover, moved, this, &BarStage::placePopupSoon));
    }
}

void BarStage::placePopupSoon()
{
    if (std::exchange(m_isPlacePending, true))
        return;
    const auto place = [this] {
        m_isPlacePending = false;
        if (m_popup)
            placePopup();
    };
    QMetaObject::invokeMethod(this, place, Qt::QueuedConnection);
}

void BarStage::close()
{
    if (!isOpen())
        return;
    for (const QMetaObject::Connection &connection : m_anchorConnections)
        disconnect(connection);
    m_anchorConnections.clear();
    m_presses.reset();
    m_anchor.reset();
    // Nothing is open from here on: who hears of what goes may ask, and may open something else.
    BarHolds::Token hold = std::move(m_hold);
    std::unique_ptr<PopupWindows::Handle> systemMenu = std::move(m_systemMenu);
    if (std::unique_ptr<BarPopup> popup = std::move(m_popup)) {
        popup->disconnect(this);
        popup->orderOut();
        dispose(std::move(popup));
    }
    systemMenu.reset();
    watchEscape();
    hold = {};
    Q_EMIT openChanged();
}

void BarStage::dispose(std::unique_ptr<BarPopup> popup)
{
    m_closed.erase(std::remove(m_closed.begin(), m_closed.end(), nullptr), m_closed.end());
    m_closed.emplace_back(popup.release());
    if (!m_drag)
        deleteClosed();
}

void BarStage::deleteClosed()
{
    // Not under an event of their own, whatever event loop that runs.
    for (const QPointer<BarPopup> &popup : m_closed) {
        if (popup)
            popup->deleteLater();
    }
}

void BarStage::showHelp(const BarAnchor &anchor, const QString &text)
{
    if (isOpen() || m_context.screens.screens().isEmpty())
        return;
    m_help->setText(text);
    place(*m_help, anchor);
    m_help->orderFront();
}

void BarStage::hideHelp()
{
    m_help->orderOut();
}

void BarStage::setBody(const QPainterPath &body)
{
    m_body = body;
    if (m_popup)
        placePopup();
}

bool BarStage::takesPress(const QPointF &place, Qt::MouseButton button)
{
    if (!isOpen())
        return false;
    const bool isMenu = m_systemMenu || menu();
    const bool isAnchor = !m_anchor->isPlace() && m_anchor->frame().contains(place);
    const bool isTaken = isAnchor || (isMenu && button == Qt::LeftButton);
    close();
    return isTaken;
}

void BarStage::leadPointer(const QPointF &place)
{
    MenuView *led = menu();
    if (!led)
        return;
    const QPoint inside = inPopup(place);
    m_wasPointerInMenu = m_wasPointerInMenu || led->rect().contains(inside);
    led->hover(inside);
}

void BarStage::letPointerGo(const QPointF &place)
{
    MenuView *led = menu();
    if (!led)
        return;
    const QPoint inside = inPopup(place);
    if (led->rect().contains(inside))
        led->chooseAt(inside);
    else if (m_wasPointerInMenu)
        close();
}

MenuView *BarStage::menu() const
{
    return qobject_cast<MenuView *>(m_popup.get());
}

void BarStage::pressed(const QPointF &place)
{
    // A press on the bar comes by way of takesPress(), which may be sooner or later than this.
    if (!m_popup->frame().contains(place) && !m_body.contains(inScene(place)))
        close();
}

QRectF BarStage::onScreen(const QRectF &sceneRect) const
{
    const QRectF panel = m_context.panel.frame();
    return {panel.x() + sceneRect.x(), panel.bottom() - sceneRect.bottom(), sceneRect.width(), sceneRect.height()};
}

QPointF BarStage::inScene(const QPointF &place) const
{
    const QRectF panel = m_context.panel.frame();
    return {place.x() - panel.x(), panel.bottom() - place.y()};
}

std::optional<QPointF> BarStage::restingPointer() const
{
    const Pointer &pointer = m_context.pointer;
    return pointer.pressedButtons() == Qt::NoButton ? std::optional(inScene(pointer.location())) : std::nullopt;
}

QPoint BarStage::inPopup(const QPointF &place) const
{
    const QPointF placeOnScreen = onScreen({place, QSizeF(0, 0)}).topLeft();
    const QRectF frame = m_popup->frame();
    return {qFloor(placeOnScreen.x() - frame.x()), qFloor(frame.bottom() - placeOnScreen.y())};
}

void BarStage::placePopup()
{
    place(*m_popup, *m_anchor);
}

void BarStage::place(BarPopup &popup, const BarAnchor &anchor) const
{
    if (const auto frame = frameFor(popup.naturalSize(), anchor))
        popup.setFrame(*frame);
}

std::optional<QRectF> BarStage::frameFor(const QSizeF &size, const BarAnchor &anchor) const
{
    const QRectF frame = onScreen(anchor.frame());
    const auto screen = screenNearest(m_context.screens.screens(), frame.center());
    if (!screen)
        return std::nullopt;
    return popupFrame(size, frame, onScreen(m_body.boundingRect()), screen->frame);
}

} // namespace moorline
