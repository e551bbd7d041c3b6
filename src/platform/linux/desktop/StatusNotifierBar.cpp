#include "platform/linux/desktop/StatusNotifierBar.h"

#include "platform/linux/bus/PendingBusCall.h"

#include <QPointer>

namespace moorline {

namespace {

// freedesktop.org/wiki/Specifications/StatusNotifierItem/StatusNotifierWatcher, under the name that is in use.
const QString watcher = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString watcherPath = QStringLiteral("/StatusNotifierWatcher");
constexpr std::chrono::seconds answerLimit{25};

} // namespace

StatusNotifierBar::StatusNotifierBar(Bus &bus, Clock &clock, const SymbolCatalogue &symbols)
    : m_bus(bus)
    , m_clock(clock)
    , m_symbols(symbols)
    , m_watcher(bus, clock, watcher)
    , m_hostCame(m_watcher, {watcherPath, watcher, QStringLiteral("StatusNotifierHostRegistered")},
          [this](const QDBusMessage &) { hostCame(); })
    , m_hostWent(m_watcher, {watcherPath, watcher, QStringLiteral("StatusNotifierHostUnregistered")},
          [this](const QDBusMessage &) { askForHost(); })
{
    registerStatusNotifierTypes();
    connect(&m_watcher, &FollowedName::ownerChanged, this, [this] {
        // What the watcher before was asked counts no more.
        ++m_hostNews;
        setState(false, false);
        tellWatcher();
    });
}

void StatusNotifierBar::show(const StatusBarItem &item)
{
    m_menu = std::make_unique<StatusNotifierMenu>(m_bus, item.menu);
    m_item = std::make_unique<StatusNotifierItem>(m_bus, item, m_symbols);
    connect(m_item.get(), &StatusNotifierItem::menuRequested, this, &StatusNotifierBar::menuRequested);
    tellWatcher();
}

/// By the unique name of the connection, which needs nobody's leave, also in a sandbox.
QCoro::Task<> StatusNotifierBar::tellWatcher()
{
    const QPointer<StatusNotifierBar> alive(this);
    const int news = ++m_watcherNews;
    if (!m_item || m_watcher.owner().isEmpty())
        co_return;
    auto call =
        QDBusMessage::createMethodCall(watcher, watcherPath, watcher, QStringLiteral("RegisterStatusNotifierItem"));
    call.setAutoStartService(false);
    call << m_bus.connection().baseService();
    const BusAnswer answer = co_await ask(*this, m_bus, m_clock, call, answerLimit);
    if (!alive || news != m_watcherNews)
        co_return;
    if (answer.isError())
        qDebug("Moorline: the tray does not take the item: %s", qPrintable(answer.errorText()));
    setState(!answer.isError(), m_hasHost);
    askForHost();
}

QCoro::Task<> StatusNotifierBar::askForHost()
{
    const QPointer<StatusNotifierBar> alive(this);
    const int news = ++m_hostNews;
    const auto question =
        propertyQuestion(watcher, watcherPath, watcher, QStringLiteral("IsStatusNotifierHostRegistered"));
    const BusAnswer answer = co_await ask(*this, m_bus, m_clock, question, answerLimit);
    // A watcher that cannot tell is taken for one that shows by itself what it is told of.
    if (alive && news == m_hostNews)
        setState(m_isRegistered, answer.property<bool>().value_or(true));
}

void StatusNotifierBar::hostCame()
{
    ++m_hostNews;
    setState(m_isRegistered, true);
    if (!m_isRegistered)
        tellWatcher();
}

void StatusNotifierBar::setState(bool isRegistered, bool hasHost)
{
    const bool wasShown = isShown();
    m_isRegistered = isRegistered;
    m_hasHost = hasHost;
    if (wasShown != isShown())
        Q_EMIT shownChanged();
}

} // namespace moorline
