#include "apps/AppIconRow.h"

namespace moorline {

AppIconRow::AppIconRow(AppShortcutButton::Context context, bool isPinned, QGraphicsItem *parent)
    : IconRow(parent)
    , m_context(std::move(context))
    , m_isPinned(isPinned)
{
}

QList<AppShortcutButton *> AppIconRow::buttons() const
{
    QList<AppShortcutButton *> buttons;
    for (IconButton *button : icons())
        buttons.append(static_cast<AppShortcutButton *>(button));
    return buttons;
}

void AppIconRow::show(const QList<AppShortcut> &shortcuts)
{
    m_shortcuts = shortcuts;
    QStringList ids;
    for (const AppShortcut &shortcut : shortcuts)
        ids.append(shortcut.id());
    IconRow::show(ids);
}

IconButton *AppIconRow::makeButton(qsizetype index)
{
    return new AppShortcutButton(m_context, m_shortcuts.at(index), m_isPinned, this);
}

void AppIconRow::renew(IconButton &button, qsizetype index)
{
    static_cast<AppShortcutButton &>(button).setShortcut(m_shortcuts.at(index));
}

} // namespace moorline
