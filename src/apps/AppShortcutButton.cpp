#include "apps/AppShortcutButton.h"

#include "apps/AppBadgeService.h"
#include "apps/AppLauncher.h"
#include "apps/RunningAppsService.h"
#include "chrome/BarStage.h"
#include "chrome/ReorderDrag.h"
#include "files/DroppedFiles.h"
#include "platform/AppBundles.h"
#include "settings/SettingsStore.h"
#include "theme/DevicePixels.h"

#include <QPainter>
#include <QPixmap>
#include <algorithm>

namespace moorline {

namespace {

constexpr qreal restScale = 1;
constexpr qreal hoverScale = 1.08;
constexpr qreal dropScale = 1.16;
/// The spring swings beyond where it leads, from wherever it was sent there.
constexpr qreal largestScale = 1.2;
constexpr Spring growth{.response = 0.25, .damping = 0.7};

constexpr qreal carriedOpacity = 0.35;
constexpr Spring fading{.response = 0.3, .damping = 0.7};

constexpr Spring sliding{.response = 0.3, .damping = 0.75};

constexpr qreal dotGap = 3;
constexpr qreal dotSize = 3;
const QColor dotColor = QColor::fromRgbF(1, 1, 1, 0.55F);

QRectF grown(const QRectF &rect, qreal scale)
{
    const QSizeF more = rect.size() * (scale - 1) / 2;
    return rect.marginsAdded({more.width(), more.height(), more.width(), more.height()});
}

} // namespace

AppShortcutButton::AppShortcutButton(const Context &context, AppShortcut shortcut, bool isPinned, QGraphicsItem *parent)
    : BarItem(parent)
    , m_context(context)
    , m_shortcut(std::move(shortcut))
    , m_isPinned(isPinned)
    , m_icon(context.icons)
    , m_scale(context.clock, growth, restScale, [this] { update(growingRect()); })
    , m_opacity(context.clock, fading, 1, [this] { update(growingRect()); })
    , m_place(context.clock, sliding, 0, [this] { setX(m_place.value()); })
    , m_watcher(context.clock, context.pointer, context.panelFrame)
{
    setTouchable(true);
    setAcceptDrops(true);
    if (m_isPinned)
        setDraggable(DragKind::out);
    connect(this, &BarItem::clicked, this, [this] { m_context.launcher.launch(m_shortcut); });
    connect(this, &BarItem::menuRequested, this, [this] { m_context.stage.openMenu(*this, menu()); });
    connect(this, &BarItem::hoveredChanged, this, &AppShortcutButton::updateScale);
    connect(this, &BarItem::dropHoveredChanged, this, &AppShortcutButton::updateScale);
    connect(this, &BarItem::draggedChanged, this, [this] { m_opacity.moveTo(isDragged() ? carriedOpacity : 1); });
    connect(&m_icon, &IconImage::changed, this, [this] { update(growingRect()); });
    connect(&context.bundles, &AppBundles::changed, this, &AppShortcutButton::identify);
    connect(&context.running, &RunningAppsService::runningBundleIDsChanged, this, &AppShortcutButton::updateRunning);
    connect(&context.badges, &AppBadgeService::badgesChanged, this, &AppShortcutButton::updateBadge);
    resize(sizeFor(m_iconSize));
    m_badge.setIconSize(m_iconSize);
    identify();
}

QSizeF AppShortcutButton::sizeFor(qreal iconSize)
{
    // The dot has its place whether it is there or not.
    return {iconSize, iconSize + dotGap + dotSize};
}

void AppShortcutButton::setShortcut(const AppShortcut &shortcut)
{
    if (shortcut == m_shortcut)
        return;
    m_shortcut = shortcut;
    identify();
}

void AppShortcutButton::setIconSize(qreal size)
{
    if (size == m_iconSize)
        return;
    prepareGeometryChange();
    m_iconSize = size;
    m_badge.setIconSize(size);
    m_icon.show(IconKind::application, m_identity.path, size);
    resize(sizeFor(size));
}

void AppShortcutButton::placeAt(qreal x)
{
    if (x != m_place.target())
        m_place.jumpTo(x);
}

void AppShortcutButton::slideTo(qreal x)
{
    m_place.moveTo(x);
}

void AppShortcutButton::identify()
{
    m_identity = identityOf(m_shortcut, m_context.bundles);
    m_icon.show(IconKind::application, m_identity.path, m_iconSize);
    setHelpText(m_identity.name);
    updateRunning();
    updateBadge();
    describe();
}

void AppShortcutButton::updateRunning()
{
    const bool isRunning = std::any_of(m_identity.identifiers.begin(), m_identity.identifiers.end(),
        [this](const QString &identifier) { return m_context.running.isRunning(identifier); });
    if (isRunning == m_isRunning)
        return;
    m_isRunning = isRunning;
    update(dotRect());
    describe();
}

void AppShortcutButton::updateBadge()
{
    QString badge;
    for (const QString &identifier : std::as_const(m_identity.identifiers)) {
        if (badge.isEmpty())
            badge = m_context.badges.badges().value(identifier);
    }
    if (BadgeView::display(badge) == m_badge.text())
        return;
    update(growingRect());
    prepareGeometryChange();
    m_badge.setBadge(badge);
    update(growingRect());
    describe();
}

void AppShortcutButton::updateScale()
{
    if (isDropHovered())
        m_scale.moveTo(dropScale);
    else
        m_scale.moveTo(isHovered() ? hoverScale : restScale);
}

void AppShortcutButton::describe()
{
    QStringList state;
    if (m_isRunning)
        state.append(tr("Running"));
    if (!m_badge.text().isEmpty())
        state.append(m_badge.text());
    setDescription({.role = QAccessible::Button, .name = m_identity.name, .state = state.join(QStringLiteral(", "))});
}

Menu AppShortcutButton::menu() const
{
    // What is chosen may be chosen when the button is gone.
    AppLauncher *launcher = &m_context.launcher;
    SettingsStore *store = &m_context.store;
    const AppShortcut shortcut = m_shortcut;
    Menu menu{{.title = tr("Open %1").arg(m_identity.name), .action = [=] { launcher->launch(shortcut); }},
        MenuItem::separator()};
    if (m_isPinned)
        menu.append({.title = tr("Remove from Dock"), .action = [=] { store->removeShortcut(shortcut); }});
    else
        menu.append({.title = tr("Pin to Dock"), .action = [=] { store->addShortcut(shortcut); }});
    if (!m_context.launcher.canQuit(shortcut))
        return menu;
    menu.append(MenuItem::separator());
    menu.append({.title = tr("Quit %1").arg(m_identity.name), .action = [=] { launcher->quit(shortcut); }});
    return menu;
}

void AppShortcutButton::drag(const QPointF &place)
{
    m_wasLetGoOff.reset();
    m_watcher.begin([this](bool isOff) {
        // The end of the drag itself may be heard of later, and be another one.
        if (isDragged())
            m_wasLetGoOff = isOff;
        else
            Q_EMIT letGo(isOff);
    });
    const QPointF held(std::clamp(place.x(), 0.0, m_iconSize), std::clamp(place.y(), 0.0, m_iconSize));
    carryReordered(*this, m_shortcut.id(), QPixmap::fromImage(m_icon.image()), held.toPoint());
}

void AppShortcutButton::dragEnded(DragEnd end)
{
    switch (end) {
    case DragEnd::letGo:
        if (m_wasLetGoOff)
            Q_EMIT letGo(*m_wasLetGoOff);
        return;
    case DragEnd::cancelled:
        m_watcher.stop();
        Q_EMIT carryingCancelled();
        return;
    }
}

bool AppShortcutButton::takesDrop(const QStringList &formats) const
{
    // Also for an application that takes none: they are meant for it, and not to be pinned by the bar below.
    return mayHoldFiles(formats);
}

bool AppShortcutButton::refusesDrop() const
{
    return !m_context.launcher.takesFiles(m_shortcut);
}

void AppShortcutButton::dropRefused()
{
    m_context.launcher.refuseFiles(m_shortcut);
}

bool AppShortcutButton::drop(const QMimeData &data)
{
    const QList<QUrl> files = loadDroppedFileURLs(data);
    // The launcher says why where it takes none.
    m_context.launcher.open(files, m_shortcut);
    return !files.isEmpty() && m_context.launcher.takesFiles(m_shortcut);
}

QRectF AppShortcutButton::iconRect() const
{
    return {0, 0, m_iconSize, m_iconSize};
}

QRectF AppShortcutButton::growingRect() const
{
    return grown(iconRect(), largestScale).united(m_badge.boundingRect());
}

QRectF AppShortcutButton::dotRect() const
{
    return {(m_iconSize - dotSize) / 2, m_iconSize + dotGap, dotSize, dotSize};
}

QRectF AppShortcutButton::touchRect() const
{
    return QRectF(QPointF(0, 0), sizeFor(m_iconSize)).marginsAdded({0, reach, 0, reach});
}

QRectF AppShortcutButton::boundingRect() const
{
    return touchRect().united(growingRect());
}

QPainterPath AppShortcutButton::shape() const
{
    QPainterPath area;
    area.addRect(touchRect());
    return area;
}

void AppShortcutButton::paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *)
{
    painter->save();
    painter->setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    if (m_isRunning) {
        painter->setPen(Qt::NoPen);
        painter->setBrush(dotColor);
        painter->drawEllipse(QRectF(snappedToPixels(*painter, dotRect().topLeft()), dotRect().size()));
    }
    painter->setOpacity(painter->opacity() * m_opacity.value());
    paintIcon(*painter);
    m_badge.paint(*painter);
    painter->restore();
}

void AppShortcutButton::paintIcon(QPainter &painter)
{
    const QImage &image = m_icon.at(deviceScale(painter));
    if (image.isNull())
        return;
    const QRectF place = iconRect();
    const bool isInItsSize = qFuzzyCompare(image.devicePixelRatio(), deviceScale(painter))
        && image.deviceIndependentSize().toSize() == place.size().toSize();
    if (m_scale.value() == restScale && isInItsSize)
        painter.drawImage(snappedToPixels(painter, place.topLeft()), image);
    else
        painter.drawImage(grown(place, m_scale.value()), image);
}

} // namespace moorline
