#pragma once

#include "platform/linux/apps/AppQuitter.h"
#include "platform/linux/apps/RunningSet.h"
#include "platform/linux/apps/StarterWorkspace.h"
#include "platform/linux/x11/WindowRequests.h"

namespace moorline {

class Bus;
class UserTime;
class XConnection;

/// Virtual desktops as spaces, and as running applications those that have windows: by desktop entry, which is their
/// bundle.
class LinuxWorkspace final : public StarterWorkspace {
    Q_OBJECT
public:
    /// What it is built on, all of which outlives it.
    struct Context {
        XConnection &connection;
        ClientWindows &clients;
        DesktopEntries &entries;
        AppStarter &starter;
        const UserTime &userTime;
        Bus &sessionBus;
        Clock &clock;
    };

    explicit LinuxWorkspace(const Context &context);

    /// Those with a window that a taskbar would show. What runs without one is started when it is asked for, and shows
    /// itself.
    [[nodiscard]] std::optional<QList<RunningApplication>> runningApplications() const override
    {
        return m_applications;
    }
    /// With most window managers it can be had that the focus follows the pointer.
    [[nodiscard]] bool activatesInPassing() const override { return true; }
    /// Waits for the server.
    [[nodiscard]] bool canTerminate(const RunningApplication &application) const override;
    void activate(const RunningApplication &application) override;
    void terminate(const RunningApplication &application) override;

private:
    void noteProperty(xcb_window_t window, xcb_atom_t name);
    void publish();
    void noteActive();
    [[nodiscard]] RunningApplication described(const RunningSet::Member &member) const;
    /// Those of the application that a taskbar would show, bottom to top.
    [[nodiscard]] QList<WindowFacts> taskbarWindows(const OpenApplication &application) const;
    /// When the user asked for what is being done now, by the server's clock.
    [[nodiscard]] xcb_timestamp_t time() const;

    Context m_context;
    WindowRequests m_requests;
    RunningSet m_running;
    AppQuitter m_quitter;
    std::optional<QList<RunningApplication>> m_applications;
};

} // namespace moorline
