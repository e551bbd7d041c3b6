#include "platform/linux/desktop/TrayMenu.h"

#include <QCursor>

namespace moorline {

namespace {

/// An ampersand would mark the next letter as the one to press.
QString withoutMnemonics(const QString &title)
{
    return QString(title).replace(u'&', QStringLiteral("&&"));
}

void addTo(QMenu &menu, const MenuItem &item)
{
    if (item.isSeparator()) {
        menu.addSeparator();
        return;
    }
    QAction *action = menu.addAction(withoutMnemonics(item.title));
    action->setObjectName(item.identifier);
    action->setShortcut(item.shortcut);
    action->setShortcutVisibleInContextMenu(true);
    action->setEnabled(item.isEnabled());
    action->setCheckable(item.isCheckable);
    action->setChecked(item.isChecked);
    QObject::connect(action, &QAction::triggered, &menu, item.action);
}

} // namespace

TrayMenu::TrayMenu(std::function<Menu()> menu)
    : m_look(std::move(menu))
{
}

void TrayMenu::popUp()
{
    if (m_menu.isVisible())
        return;
    fill();
    m_menu.popup(QCursor::pos());
}

void TrayMenu::fill()
{
    m_menu.clear();
    for (const MenuItem &item : m_look())
        addTo(m_menu, item);
}

} // namespace moorline
