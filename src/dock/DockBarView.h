#pragma once

#include "dock/BarContents.h"
#include "dock/BarMenu.h"
#include "platform/Clock.h"

#include <QGraphicsWidget>

namespace moorline {

class AutoHideNudge;
class BarStage;
class BarWidget;
class Pill;
class Screens;
class Symbols;
class SystemDock;

/// The content of the panel: the pill with its widgets and, above it, the nudge about the desktop's dock.
/// The body stands centred at the bottom of whatever size the view is given.
class DockBarView final : public QGraphicsWidget {
    Q_OBJECT
public:
    /// What the bar is built on. Everything lent here outlives the bar.
    struct Context {
        SettingsStore &store;
        SystemDock &systemDock;
        Clock &clock;
        const Screens &screens;
        const Symbols &symbols;
        /// Opens menus and popovers above the bar, and holds it for drags.
        BarStage &stage;
        BarCommands commands;
        /// Builds the widget of a kind; null for a kind that there is no widget for.
        std::function<std::unique_ptr<BarWidget>(WidgetKind)> makeWidget;
        /// What plays now.
        std::function<Playback()> playback;
        /// How many applications the recent-apps service lists now; none while there is no such function.
        std::function<qsizetype()> recentApps = nullptr;
    };
    /// Receives the width the content needs, in points.
    using ContentWidthChange = std::function<void(qreal)>;

    DockBarView(Context context, ContentWidthChange onContentWidthChange);
    ~DockBarView() override;

    [[nodiscard]] Clock &clock() const { return m_context.clock; }
    [[nodiscard]] BarStage &stage() const { return m_context.stage; }

    /// Begin and end the task that looks every two seconds whether the nudge and the music widget have their place.
    void appear();
    void disappear();
    /// Fits everything to the screens again, as after one came or went.
    void refit();
    /// Call when there are more or fewer recent applications.
    void recentAppsChanged();

    /// The kinds that have their place now, whether the program has a widget for them or not.
    [[nodiscard]] const QList<WidgetKind> &visibleWidgets() const { return m_visibleKinds; }
    /// The widgets that stand in the row now.
    [[nodiscard]] QList<WidgetKind> row() const;
    [[nodiscard]] qreal iconSize() const;
    [[nodiscard]] bool isNudgeShown() const;
    /// The natural height of the body with its margins.
    [[nodiscard]] qreal bodyHeight() const;
    /// Where the body is drawn and takes input, in the coordinates of the view.
    [[nodiscard]] QPainterPath interactiveArea() const;

    void setGeometry(const QRectF &rect) override;

Q_SIGNALS:
    void interactiveAreaChanged();
    /// What can be touched in the row stands elsewhere now, perhaps.
    void itemsMoved();
    /// The body became higher or lower.
    void bodyHeightChanged();

private:
    void evaluate();
    void settingsChanged();
    void updateRow();
    void updateNudge();
    void refitIcons(qreal measuredWidth);
    void pillWidthChanged();
    void nudgeWidthChanged();
    void reportContentWidth();
    void layOut();
    [[nodiscard]] BarState state() const;
    void openMenu(const QPointF &place);

    Context m_context;
    ContentWidthChange m_onContentWidthChange;
    bool m_isMusicVisible = false;
    QList<WidgetKind> m_visibleKinds;
    bool m_dockConflicts;
    std::unique_ptr<Clock::Timer> m_task;
    Pill *m_pill;
    AutoHideNudge *m_nudge;
};

} // namespace moorline
