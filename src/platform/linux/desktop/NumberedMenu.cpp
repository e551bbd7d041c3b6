#include "platform/linux/desktop/NumberedMenu.h"

#include <algorithm>

namespace moorline {

namespace {

bool isSameRow(const NumberedMenu::Entry &entry, const MenuItem &item)
{
    return entry.item.title == item.title;
}

bool looksTheSame(const NumberedMenu::Entry &entry, const MenuItem &item)
{
    return menuProperties(entry.item) == menuProperties(item);
}

/// An underscore would mark the next letter as the one to press.
QString withoutMnemonics(const QString &title)
{
    return QString(title).replace(u'_', QStringLiteral("__"));
}

/// Each press of keys as its modifiers, "Control", "Alt", "Shift" and "Super", and the key.
QList<QStringList> shortcutWords(const QKeySequence &sequence)
{
    QList<QStringList> presses;
    for (int i = 0; i < sequence.count(); ++i) {
        const QKeyCombination press = sequence[static_cast<uint>(i)];
        const Qt::KeyboardModifiers modifiers = press.keyboardModifiers();
        QStringList words;
        if (modifiers.testFlag(Qt::ControlModifier))
            words.append(QStringLiteral("Control"));
        if (modifiers.testFlag(Qt::AltModifier))
            words.append(QStringLiteral("Alt"));
        if (modifiers.testFlag(Qt::ShiftModifier))
            words.append(QStringLiteral("Shift"));
        if (modifiers.testFlag(Qt::MetaModifier))
            words.append(QStringLiteral("Super"));
        presses.append(words << QKeySequence(press.key()).toString(QKeySequence::PortableText));
    }
    return presses;
}

/// dbus-menu.xml of libdbusmenu, "Properties of menu items".
const QVariantMap &defaults()
{
    static const QVariantMap map{
        {QStringLiteral("type"), QStringLiteral("standard")},
        {QStringLiteral("label"), QString()},
        {QStringLiteral("enabled"), true},
        {QStringLiteral("visible"), true},
        {QStringLiteral("icon-name"), QString()},
        {QStringLiteral("icon-data"), QByteArray()},
        {QStringLiteral("shortcut"), QVariant::fromValue(QList<QStringList>())},
        {QStringLiteral("toggle-type"), QString()},
        {QStringLiteral("toggle-state"), -1},
        {QStringLiteral("children-display"), QString()},
        {QStringLiteral("disposition"), QStringLiteral("normal")},
    };
    return map;
}

} // namespace

NumberedMenu::Change NumberedMenu::replace(const Menu &menu)
{
    const auto matches = [&](auto comparison) {
        return std::equal(m_entries.begin(), m_entries.end(), menu.begin(), menu.end(), comparison);
    };
    const bool hasSameRows = matches(isSameRow);
    const bool isTheSame = hasSameRows && matches(looksTheSame);
    QList<Entry> entries;
    for (const MenuItem &item : menu)
        entries.append({hasSameRows ? m_entries[entries.size()].id : ++m_lastId, item});
    m_entries = entries;
    if (isTheSame)
        return Change::none;
    return hasSameRows ? Change::properties : Change::layout;
}

const NumberedMenu::Entry *NumberedMenu::find(int id) const
{
    const auto found =
        std::find_if(m_entries.begin(), m_entries.end(), [id](const Entry &entry) { return entry.id == id; });
    return found == m_entries.end() ? nullptr : &*found;
}

QVariantMap menuProperties(const MenuItem &item)
{
    if (item.isSeparator())
        return {{QStringLiteral("type"), QStringLiteral("separator")}};
    QVariantMap properties{{QStringLiteral("label"), withoutMnemonics(item.title)}};
    if (!item.isEnabled())
        properties[QStringLiteral("enabled")] = false;
    if (!item.shortcut.isEmpty())
        properties[QStringLiteral("shortcut")] = QVariant::fromValue(shortcutWords(item.shortcut));
    if (item.isCheckable) {
        properties[QStringLiteral("toggle-type")] = QStringLiteral("checkmark");
        properties[QStringLiteral("toggle-state")] = item.isChecked ? 1 : 0;
    }
    return properties;
}

std::optional<QVariant> menuPropertyDefault(const QString &name)
{
    const auto found = defaults().constFind(name);
    return found == defaults().constEnd() ? std::nullopt : std::optional(*found);
}

} // namespace moorline
