#pragma once

#include "freedesktop/OpenApplications.h"
#include "freedesktop/QuitPlan.h"
#include "platform/Clock.h"
#include "platform/linux/x11/WindowRequests.h"

#include <QCoroTask>
#include <QObject>

namespace moorline {

class AppStarter;
class Bus;
class DesktopEntries;
class XConnection;

/// Asks applications to quit, each in the way that it offers. None is made to.
class AppQuitter final : public QObject {
    Q_OBJECT
public:
    /// What it is built on, all of which outlives it.
    struct Context {
        XConnection &connection;
        DesktopEntries &entries;
        AppStarter &starter;
        Bus &sessionBus;
        Clock &clock;
    };

    explicit AppQuitter(const Context &context);

    /// Whether there is any way to ask. Waits for the server.
    [[nodiscard]] bool canQuit(const OpenApplication &application) const;
    /// Where nobody hears of it by one way, the next one is taken, at last that of closing the windows. `time` is when
    /// the user asked for it, by the X server's clock.
    void quit(const OpenApplication &application, xcb_timestamp_t time);

private:
    /// Where a program offers its actions on the session bus.
    struct Exporter {
        QString busName;
        QString path;

        bool operator==(const Exporter &) const = default;
    };
    /// Windows of one program.
    struct Part {
        std::optional<Exporter> exporter = std::nullopt;
        QList<XWindowId> windows = {};
    };

    [[nodiscard]] QList<Part> partsOf(const OpenApplication &application) const;
    [[nodiscard]] std::optional<Exporter> exporterOf(XWindowId window) const;
    [[nodiscard]] const EntryRecord *entryOf(const OpenApplication &application) const;
    void quitWindows(const OpenApplication &application, xcb_timestamp_t time);
    QCoro::Task<> quitPart(Part part, xcb_timestamp_t time);
    [[nodiscard]] QuitPlan planFor(const Part &part, bool exportsQuit) const;
    void close(const QList<XWindowId> &windows, xcb_timestamp_t time) const;

    Context m_context;
    WindowRequests m_requests;
};

} // namespace moorline
