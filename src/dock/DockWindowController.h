#pragma once

#include "dock/FrameSlide.h"
#include "platform/Screens.h"

#include <QObject>
#include <QPointer>

namespace moorline {

class DockBarView;
class DockPanel;
class PanelWindow;
class Pointer;
class SettingsStore;
class SpaceProbe;
class SystemDock;
class WindowServer;
class Workspace;

/// Creates the panel, sizes it to the bar, places it, and slides it out of the way: for the desktop's own dock when the
/// pointer rests at the bottom edge, and for full-screen spaces.
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
    [[nodiscard]] bool isHiddenForSystemDock() const { return m_isHiddenForSystemDock; }
    [[nodiscard]] bool isHiddenForFullScreen() const { return m_isHiddenForFullScreen; }

private:
    void buildPanel();
    void observe();
    void screensChanged();
    void settingsChanged();
    void contentWidthChanged(qreal measuredWidth);
    void applyCollectionBehavior();
    void updateVisibilityMonitoring();
    void evaluateHiding();
    void evaluateFullScreen();
    QCoro::Task<> evaluateAfterSpaceSettles();
    [[nodiscard]] bool isFullScreen() const;
    void startPeekTimer();
    void peek();
    void setHiddenForSystemDock(bool hidden);
    void setHiddenForFullScreen(bool hidden);
    void animateToCurrentPosition();
    void logTick() const;
    [[nodiscard]] QRectF targetFrame() const;
    /// Above the bottom edge of the screen, and infinite on another one; absent without a screen.
    [[nodiscard]] std::optional<qreal> pointerHeight() const;

    Context m_context;
    MakeBar m_makeBar;
    std::unique_ptr<DockPanel> m_panel;
    QPointer<DockBarView> m_bar;
    FrameSlide m_slide;
    qreal m_contentWidth;
    bool m_isHiddenForSystemDock = false;
    bool m_isHiddenForFullScreen = false;
    /// The active space is full-screen and the panel stays out of it, but for a peek.
    bool m_fullScreenHideEngaged = false;
    std::optional<std::chrono::milliseconds> m_edgeEnteredAt;
    std::unique_ptr<Clock::Timer> m_pollTimer;
    std::unique_ptr<Clock::Timer> m_peekTimer;
    std::unique_ptr<Clock::Timer> m_fullScreenTimer;
    std::unique_ptr<Clock::Timer> m_debugTimer;
};

} // namespace moorline
