#pragma once

#include "platform/WindowServer.h"

namespace moorline {

class ClientWindows;

/// The windows as the window manager lists them, and the docks that bypass it.
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
