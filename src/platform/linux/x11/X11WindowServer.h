#pragma once

#include "platform/WindowServer.h"

namespace moorline {

class ClientWindows;
struct ClientSnapshot;
struct ClientWindow;

/// The windows as the window manager lists them, with another program's dock at the bottom edge in the part of "Dock".
class X11WindowServer final : public WindowServer {
public:
    explicit X11WindowServer(ClientWindows &clients);

    [[nodiscard]] std::optional<QList<WindowDescription>> onScreenWindows() const override;
    [[nodiscard]] int level(WindowLevel level) const override;
    /// X knows no spaces. Its windows say themselves whether they are full-screen.
    [[nodiscard]] std::optional<QList<DisplaySpace>> managedDisplaySpaces() const override { return std::nullopt; }
    [[nodiscard]] std::optional<QString> mainDisplayUUID() const override { return std::nullopt; }

private:
    ClientWindows &m_clients;
};

} // namespace moorline
