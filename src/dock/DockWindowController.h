#pragma once

#include "dock/FrameSlide.h"
#include "dock/FullScreenWatch.h"
#include "dock/SystemDockWatch.h"
#include "platform/Screens.h"

#include <QObject>
#include <QPointer>

namespace moorline {

class DockBarView;
class DockPanel;
class PanelWindow;

/// Creates the panel, sizes it to the bar, places it, and slides it out of the way while one of its watches says so.
class DockWindowController final : public QObject {
    Q_OBJECT
public:
    /// What the controller is built on. Everything lent here outlives it.
    struct Context {
        SettingsStore &store;
        const SystemDock &systemDock;
        const SpaceProbe &spaceProbe;
        Clock &clock;
        const Screens &screens;
        const Pointer &pointer;
        const WindowServer &windowServer;
        const Workspace &workspace;
        PanelWindow &panelWindow;
        /// While the bar is held, nothing slides it away.
        const BarHolds &holds;
        /// Writes a line about the panel's frame every second.
        bool debug = false;
    };
    /// Builds the bar around the function that takes its content width.
    using MakeBar = std::function<std::unique_ptr<DockBarView>(std::function<void(qreal)>)>;

    DockWindowController(Context context, MakeBar makeBar, QObject *parent = nullptr);
    ~DockWindowController() override;

    /// Creates and shows the panel. Later calls do nothing.
    void show();
    /// Puts the panel where it belongs now, without a slide.
    void reposition();

    /// Null before show().
    [[nodiscard]] DockPanel *panel() const { return m_panel.get(); }
    /// Where the panel stands when nothing hides it. In points, origin at the bottom left of the primary screen.
    [[nodiscard]] QRectF shownFrame() const;
    [[nodiscard]] std::optional<Screen> targetScreen() const;
    [[nodiscard]] qreal contentWidth() const { return m_contentWidth; }
    [[nodiscard]] bool isHiddenForSystemDock() const { return m_systemDockWatch.keepsPanelAway(); }
    [[nodiscard]] bool isHiddenForFullScreen() const { return m_fullScreenWatch.keepsPanelAway(); }

private:
    void buildPanel();
    void observe();
    void screensChanged();
    void fitToScreens();
    void settingsChanged();
    void contentWidthChanged(qreal measuredWidth);
    void applyCollectionBehavior();
    void animateToCurrentPosition();
    void logTick() const;
    [[nodiscard]] QRectF targetFrame() const;

    Context m_context;
    MakeBar m_makeBar;
    std::unique_ptr<DockPanel> m_panel;
    QPointer<DockBarView> m_bar;
    FrameSlide m_slide;
    SystemDockWatch m_systemDockWatch;
    FullScreenWatch m_fullScreenWatch;
    qreal m_contentWidth;
    std::unique_ptr<Clock::Timer> m_screensTimer;
    std::unique_ptr<Clock::Timer> m_debugTimer;
};

} // namespace moorline
