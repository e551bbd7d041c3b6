#pragma once

#include <QKeySequence>
#include <QString>
#include <optional>

namespace moorline {

/// A shortcut as macOS's menus name it: a character, and what is held with it. Qt's Ctrl is macOS's Command, and Qt's
/// Meta its Control.
struct KeyEquivalent {
    /// As typed without Shift: a capital letter would mean Shift as well.
    QString character;
    bool command = false;
    bool shift = false;
    bool option = false;
    bool control = false;

    bool operator==(const KeyEquivalent &) const = default;
};

/// Absent for no shortcut, for one of several keys in turn, and for a key that types no character.
[[nodiscard]] std::optional<KeyEquivalent> keyEquivalentOf(const QKeySequence &shortcut);

} // namespace moorline
