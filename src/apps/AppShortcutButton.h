#pragma once

#include "apps/AppIdentity.h"
#include "apps/BadgeView.h"
#include "chrome/BarItem.h"
#include "files/DragOffWatcher.h"
#include "platform/Menu.h"
#include "theme/IconImage.h"
#include "theme/SpringMotion.h"

namespace moorline {

class AppBadgeService;
class AppLauncher;
class RunningAppsService;
class SettingsStore;

/// One application in the bar: its icon, a dot while it runs, and its badge. A click launches it, and files can be
/// dropped on it. One that is pinned can be carried to another place in its row, and off the bar.
class AppShortcutButton final : public BarItem {
    Q_OBJECT
public:
    /// Everything lent here outlives the button.
    struct Context {
        SettingsStore &store;
        AppLauncher &launcher;
        const AppBundles &bundles;
        const RunningAppsService &running;
        const AppBadgeService &badges;
        IconCache &icons;
        BarStage &stage;
        Clock &clock;
        const Pointer &pointer;
        DragOffWatcher::PanelFrame panelFrame;
    };

    AppShortcutButton(const Context &context, AppShortcut shortcut, bool isPinned, QGraphicsItem *parent = nullptr);

    /// How far above and below itself it takes the pointer: beyond both edges of the pill, which takes no input
    /// outside of itself.
    static constexpr qreal reach = 24;

    /// What a button at this icon size takes, in points.
    [[nodiscard]] static QSizeF sizeFor(qreal iconSize);

    /// Another record of the same application.
    void setShortcut(const AppShortcut &shortcut);
    [[nodiscard]] const AppShortcut &shortcut() const { return m_shortcut; }
    void setIconSize(qreal size);
    /// Its place in the row, taken at once; a button on its way there goes on.
    void placeAt(qreal x);
    /// Slides there.
    void slideTo(qreal x);
    [[nodiscard]] bool isRunning() const { return m_isRunning; }
    [[nodiscard]] const QString &badge() const { return m_badge.text(); }
    /// How large and how opaque the icon is drawn now; 1 and 1 at rest.
    [[nodiscard]] double iconScale() const { return m_scale.value(); }
    [[nodiscard]] double iconOpacity() const { return m_opacity.value(); }
    [[nodiscard]] Menu menu() const;

    /// Higher than what is painted: a pointer that is thrown at the edge of the screen hits as well.
    [[nodiscard]] QRectF boundingRect() const override;
    [[nodiscard]] QPainterPath shape() const override;
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;

Q_SIGNALS:
    /// It was carried away and let go, off the bar or not.
    void letGo(bool isOff);
    /// It was carried away and is to be where it was, wherever the button is let go.
    void carryingCancelled();

protected:
    void drag(const QPointF &place) override;
    void dragEnded(DragEnd end) override;
    [[nodiscard]] bool takesDrop(const QStringList &formats) const override;
    [[nodiscard]] bool refusesDrop() const override;
    void dropRefused() override;
    bool drop(const QMimeData &data) override;

private:
    [[nodiscard]] QRectF iconRect() const;
    /// The icon where it is largest, and its badge.
    [[nodiscard]] QRectF growingRect() const;
    [[nodiscard]] QRectF dotRect() const;
    [[nodiscard]] QRectF touchRect() const;
    void paintIcon(QPainter &painter);
    void identify();
    void updateRunning();
    void updateBadge();
    void updateScale();
    void describe();

    Context m_context;
    AppShortcut m_shortcut;
    bool m_isPinned;
    AppIdentity m_identity;
    qreal m_iconSize = 46;
    IconImage m_icon;
    BadgeView m_badge;
    bool m_isRunning = false;
    SpringMotion m_scale;
    SpringMotion m_opacity;
    SpringMotion m_place;
    DragOffWatcher m_watcher;
    /// Whether it was let go off the bar, once that is known of the drag that is under way.
    std::optional<bool> m_wasLetGoOff;
};

} // namespace moorline
