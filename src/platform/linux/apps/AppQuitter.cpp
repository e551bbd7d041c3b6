#include "platform/linux/apps/AppQuitter.h"

#include "platform/linux/apps/AppStarter.h"
#include "platform/linux/apps/DesktopEntries.h"
#include "platform/linux/bus/Bus.h"
#include "platform/linux/bus/PendingBusCall.h"
#include "platform/linux/x11/XConnection.h"

#include <QDBusMessage>
#include <QPointer>
#include <QRegularExpression>
#include <algorithm>

namespace moorline {

namespace {

constexpr std::chrono::seconds answerLimit{5};

const QString quitAction = QStringLiteral("quit");

QDBusMessage actionsCall(const QString &busName, const QString &path, const QString &method)
{
    return QDBusMessage::createMethodCall(busName, path, QStringLiteral("org.gtk.Actions"), method);
}

/// The program says so itself, so it may be anything.
bool isPath(const QString &text)
{
    static const QRegularExpression path(QStringLiteral("^(/|(/[A-Za-z0-9_]+)+)$"));
    return text.size() < 256 && path.match(text).hasMatch();
}

bool isUniqueName(const QString &text)
{
    static const QRegularExpression name(QStringLiteral("^:[0-9]+(\\.[0-9]+)+$"));
    return text.size() < 256 && name.match(text).hasMatch();
}

QDBusMessage quitCall(const QString &busName, const QString &path)
{
    return actionsCall(busName, path, QStringLiteral("Activate")) << quitAction << QVariantList() << QVariantMap();
}

} // namespace

AppQuitter::AppQuitter(const Context &context)
    : m_context(context)
    , m_requests(context.connection)
{
}

bool AppQuitter::canQuit(const OpenApplication &application) const
{
    const EntryRecord *record = entryOf(application);
    if (record && canBeAskedToQuit(record->actions, {}))
        return true;
    // One after the other, as the first usually settles it.
    const bool isOneWilling =
        std::any_of(application.taskbarWindows.begin(), application.taskbarWindows.end(), [this](XWindowId window) {
            const QuitOffer offer{
                .isClosable = m_requests.canBeAskedToClose(window), .hasActions = exporterOf(window).has_value()};
            return canBeAskedToQuit({}, {offer});
        });
    // Events may have come with the answers.
    m_context.connection.reportSoon();
    return isOneWilling;
}

void AppQuitter::quit(const OpenApplication &application, xcb_timestamp_t time)
{
    if (const EntryRecord *record = entryOf(application)) {
        // What the entry offers needs no look at the windows.
        const QuitPlan plan = planQuit(record->actions, false, {}, {});
        if (const auto *byEntry = std::get_if<QuitByEntryAction>(&plan)) {
            const auto heard = [alive = QPointer<AppQuitter>(this), application, time](bool isHeard) {
                if (alive && !isHeard)
                    alive->quitWindows(application, time);
            };
            return m_context.starter.startAction(record->path, byEntry->action, heard);
        }
    }
    quitWindows(application, time);
}

const EntryRecord *AppQuitter::entryOf(const OpenApplication &application) const
{
    return application.entry ? m_context.entries.catalogue()->byId(*application.entry) : nullptr;
}

void AppQuitter::quitWindows(const OpenApplication &application, xcb_timestamp_t time)
{
    const QList<Part> parts = partsOf(application);
    for (const Part &part : parts)
        quitPart(part, time);
}

QList<AppQuitter::Part> AppQuitter::partsOf(const OpenApplication &application) const
{
    QList<Part> parts;
    for (const XWindowId window : application.taskbarWindows) {
        const auto exporter = exporterOf(window);
        auto part = std::find_if(parts.begin(), parts.end(), [&](const Part &one) { return one.exporter == exporter; });
        if (part == parts.end())
            part = parts.insert(parts.end(), Part{.exporter = exporter});
        part->windows.append(window);
    }
    return parts;
}

std::optional<AppQuitter::Exporter> AppQuitter::exporterOf(XWindowId window) const
{
    const PendingProperty name = m_context.connection.request(window, XAtom::gtkUniqueBusName);
    const PendingProperty path = m_context.connection.request(window, XAtom::gtkApplicationObjectPath);
    const Exporter exporter{QString::fromUtf8(name.read().bytes()), QString::fromUtf8(path.read().bytes())};
    const bool isSound = isUniqueName(exporter.busName) && isPath(exporter.path);
    return isSound ? std::optional(exporter) : std::nullopt;
}

QCoro::Task<> AppQuitter::quitPart(Part part, xcb_timestamp_t time)
{
    const QPointer<AppQuitter> alive(this);
    bool exportsQuit = false;
    if (part.exporter) {
        const auto question = actionsCall(part.exporter->busName, part.exporter->path, QStringLiteral("List"));
        const BusAnswer answer = co_await ask(*this, m_context.sessionBus, m_context.clock, question, answerLimit);
        if (!alive)
            co_return;
        exportsQuit = answer.value<QStringList>().value_or(QStringList()).contains(quitAction);
    }
    QuitPlan plan = planFor(part, exportsQuit);
    if (std::holds_alternative<QuitByExportedAction>(plan)) {
        const BusAnswer answer = co_await ask(*this, m_context.sessionBus, m_context.clock,
            quitCall(part.exporter->busName, part.exporter->path), answerLimit);
        if (!alive || !answer.isError() || !isQuitUnheard(answer.errorName()))
            co_return;
        plan = planFor(part, false);
    }
    if (const auto *closing = std::get_if<QuitByClosing>(&plan))
        close(closing->windows, time);
}

QuitPlan AppQuitter::planFor(const Part &part, bool exportsQuit) const
{
    QList<XWindowId> closable = part.windows;
    closable.removeIf([this](XWindowId window) { return !m_requests.canBeAskedToClose(window); });
    return planQuit({}, exportsQuit, part.windows, closable);
}

void AppQuitter::close(const QList<XWindowId> &windows, xcb_timestamp_t time) const
{
    for (const XWindowId window : windows)
        m_requests.close(window, time);
}

} // namespace moorline
