#include "platform/linux/LinuxStatusBar.h"

#include "platform/linux/desktop/TrayMenu.h"
#include "platform/linux/x11/X11TrayIcon.h"
#include "platform/linux/x11/XConnection.h"
#include "support/TrayChoice.h"

#include <QCursor>
#include <QToolTip>

namespace moorline {

namespace {

/// As long as Qt takes for its own.
constexpr std::chrono::milliseconds toolTipDelay{700};

} // namespace

LinuxStatusBar::LinuxStatusBar(Bus &sessionBus, Clock &clock, XConnection *connection)
    : m_bus(sessionBus)
    , m_clock(clock)
    , m_connection(connection)
{
}

LinuxStatusBar::~LinuxStatusBar() = default;

void LinuxStatusBar::show(StatusBarItem item)
{
    m_item = std::move(item);
    m_menu = std::make_unique<TrayMenu>(m_item.menu);
    m_notifier = std::make_unique<StatusNotifierBar>(m_bus, m_clock, m_symbols);
    connect(m_notifier.get(), &StatusNotifierBar::menuRequested, this, &LinuxStatusBar::openMenu);
    connect(m_notifier.get(), &StatusNotifierBar::shownChanged, this, &LinuxStatusBar::look);
    m_notifier->show(m_item);
    look();
}

void LinuxStatusBar::look()
{
    const bool isShown = m_notifier->isShown();
    const std::chrono::milliseconds now = m_clock.uptime();
    m_unshownSince = isShown ? std::nullopt : std::optional(m_unshownSince.value_or(now));
    const TrayChoice choice = chooseTray({
        .isShownOnBus = isShown,
        .hasOlderKind = m_connection != nullptr,
        .unshownFor = now - m_unshownSince.value_or(now),
    });
    m_patience = choice.again ? m_clock.after(*choice.again, [this] { look(); }) : nullptr;
    if (!choice.isInOlderTray)
        leaveOlderTray();
    else if (!m_olderIcon)
        enterOlderTray();
}

void LinuxStatusBar::enterOlderTray()
{
    const auto picture = [this](int side) {
        return m_symbols.symbol(
            {m_item.symbol, side / symbolSideToPointSize, 1, m_item.color, SymbolRendering::monochrome});
    };
    m_olderIcon = std::make_unique<X11TrayIcon>(*m_connection, m_item.name, picture);
    connect(m_olderIcon.get(), &X11TrayIcon::pressed, this, &LinuxStatusBar::openMenu);
    connect(m_olderIcon.get(), &X11TrayIcon::pointerEntered, this, &LinuxStatusBar::showToolTipSoon);
    connect(m_olderIcon.get(), &X11TrayIcon::pointerLeft, this, &LinuxStatusBar::hideToolTip);
}

void LinuxStatusBar::leaveOlderTray()
{
    if (!m_olderIcon)
        return;
    m_olderIcon.reset();
    hideToolTip();
}

void LinuxStatusBar::openMenu()
{
    hideToolTip();
    m_menu->popUp();
}

void LinuxStatusBar::showToolTipSoon()
{
    m_toolTip = m_clock.after(toolTipDelay, [this] { QToolTip::showText(QCursor::pos(), m_item.name); });
}

void LinuxStatusBar::hideToolTip()
{
    m_toolTip.reset();
    QToolTip::hideText();
}

} // namespace moorline
