#pragma once

#include "apps/AppIdentity.h"
#include "apps/BadgeView.h"
#include "chrome/IconButton.h"
#include "platform/Menu.h"

namespace moorline {

class AppBadgeService;
class AppLauncher;
class RunningAppsService;
class SettingsStore;

/// One application in the bar: its icon, a dot while it runs, and its badge. A click launches it, and files can be
/// dropped on it. One that is pinned can be carried to another place in its row, and off the bar.
class AppShortcutButton final : public IconButton {
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

    /// Another record of the same application.
    void setShortcut(const AppShortcut &shortcut);
    [[nodiscard]] const AppShortcut &shortcut() const { return m_shortcut; }
    [[nodiscard]] QString id() const override { return m_shortcut.id(); }
    [[nodiscard]] bool isRunning() const { return m_isRunning; }
    [[nodiscard]] const QString &badge() const { return m_badge.text(); }
    [[nodiscard]] Menu menu() const;

protected:
    [[nodiscard]] QRectF growingRect() const override;
    void iconSizeChanged() override;
    void paintBehind(QPainter &painter) override;
    void paintOver(QPainter &painter) override;
    [[nodiscard]] bool takesDrop(const QStringList &formats) const override;
    /// The files stay where they are: they are opened.
    [[nodiscard]] Qt::DropAction dropAnswer(Qt::DropActions possible) const override;
    [[nodiscard]] bool refusesDrop() const override;
    void dropRefused() override;
    bool drop(const QMimeData &data) override;

private:
    void identify();
    void updateRunning();
    void updateBadge();
    void describe();

    Context m_context;
    AppShortcut m_shortcut;
    bool m_isPinned;
    AppIdentity m_identity;
    BadgeView m_badge;
    bool m_isRunning = false;
};

} // namespace moorline
