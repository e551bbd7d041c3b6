#pragma once

#include <chrono>
#include <optional>

namespace moorline {

/// What is known of the trays that could show the item.
struct TrayFacts {
    /// Whether somebody on the session bus shows it.
    bool isShownOnBus = false;
    /// Whether there is an X server, which has the older kind of tray or may get one.
    bool hasOlderKind = false;
    /// For how long nobody on the bus has shown it. Says nothing while somebody does.
    std::chrono::milliseconds unshownFor{0};
};

struct TrayChoice {
    /// Whether the item is to be in the older tray.
    bool isInOlderTray = false;
    /// When to choose again although nothing changes.
    std::optional<std::chrono::milliseconds> again;

    bool operator==(const TrayChoice &) const = default;
};

/// How long nobody on the bus has to show the item before it goes into the older tray. A panel that starts may bring
/// both, one after the other.
inline constexpr std::chrono::milliseconds busTrayPatience{1000};

/// The tray of the session bus is the better one; the older one is for where nobody there shows the item.
[[nodiscard]] TrayChoice chooseTray(const TrayFacts &facts);

} // namespace moorline
