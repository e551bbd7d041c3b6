#include "platform/KeyEquivalent.h"

namespace moorline {

std::optional<KeyEquivalent> keyEquivalentOf(const QKeySequence &shortcut)
{
    if (shortcut.count() != 1)
        return std::nullopt;
    const QKeyCombination keys = shortcut[0];
    // Keys that type a character bear its code point; the others come after all of these.
    const auto character = char32_t(keys.key());
    if (character < Qt::Key_Space || character > QChar::LastValidCodePoint)
        return std::nullopt;
    const Qt::KeyboardModifiers held = keys.keyboardModifiers();
    return KeyEquivalent{
        .character = QString::fromUcs4(&character, 1).toLower(),
        .command = held.testFlag(Qt::ControlModifier),
        .shift = held.testFlag(Qt::ShiftModifier),
        .option = held.testFlag(Qt::AltModifier),
        .control = held.testFlag(Qt::MetaModifier),
    };
}

} // namespace moorline
