#include "platform/qt/QtStatusBar.h"

#include "platform/SymbolCatalogue.h"

#include <QCursor>

namespace moorline {

namespace {

constexpr int iconSides[] = {16, 18, 22, 24, 32, 48, 64};

QIcon iconOf(const StatusBarItem &item, const SymbolCatalogue &symbols)
{
    QIcon icon;
    for (const int side : iconSides) {
        icon.addPixmap(QPixmap::fromImage(
            symbols.symbol({item.symbol, side / symbolSideToPointSize, 1, item.color, SymbolRendering::monochrome})));
    }
    icon.setIsMask(true);
    return icon;
}

} // namespace

QtStatusBar::QtStatusBar(const SymbolCatalogue &symbols)
    : m_symbols(symbols)
{
    QObject::connect(&m_menu, &QMenu::aboutToShow, &m_menu, [this] { fillMenu(); });
}

void QtStatusBar::show(StatusBarItem item)
{
    m_item = std::move(item);
    fillMenu();
    showAgain();
}

void QtStatusBar::showAgain()
{
    if (!m_item.menu)
        return;
    m_icon = std::make_unique<QSystemTrayIcon>(iconOf(m_item, m_symbols));
    m_icon->setToolTip(m_item.name);
    m_icon->setContextMenu(&m_menu);
    QObject::connect(m_icon.get(), &QSystemTrayIcon::activated, &m_menu, [this](QSystemTrayIcon::ActivationReason why) {
        if (why == QSystemTrayIcon::Trigger && !m_menu.isVisible())
            m_menu.popup(QCursor::pos());
    });
    m_icon->show();
}

void QtStatusBar::fillMenu()
{
    m_menu.clear();
    for (const MenuItem &item : m_item.menu()) {
        QAction *action = item.isSeparator()
            ? m_menu.addSeparator()
            : m_menu.addAction(QString(item.title).replace(u'&', QStringLiteral("&&")));
        action->setObjectName(item.identifier);
        action->setShortcut(item.shortcut);
        action->setEnabled(item.isEnabled());
        action->setCheckable(item.isCheckable);
        action->setChecked(item.isChecked);
        if (item.action)
            QObject::connect(action, &QAction::triggered, &m_menu, item.action);
    }
}

} // namespace moorline
