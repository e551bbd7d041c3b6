#pragma once

#include <QtGlobal>
#include <functional>
#include <memory>

QT_BEGIN_NAMESPACE
class QMenu;
QT_END_NAMESPACE

namespace moorline {

class SettingsStore;
class Symbols;

/// What the menus reach beyond the bar. A command without a function is shown but cannot be chosen.
struct BarCommands {
    std::function<void()> openSettings;
    std::function<void()> quit;
};

/// The bar's context menu, as it is at this moment.
[[nodiscard]] std::unique_ptr<QMenu> makeBarMenu(
    SettingsStore &store, const Symbols &symbols, const BarCommands &commands);

} // namespace moorline
