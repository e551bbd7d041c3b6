#include "platform/linux/apps/AppQuitter.h"

#include "freedesktop/QuitPlan.h"
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

} // namespace

AppQuitter::AppQuitter(const Context &context)
    : m_context(context)
    , m_requests(context.connection)
{
}

void AppQuitter::quit(const OpenApplication &application, xcb_timestamp_t time)
{
    const EntryCatalogue &catalogue = *m_context.entries.catalogue();
    if (const EntryRecord *record = application.entry ? catalogue.byId(*application.entry) : nullptr) {
        // What the entry offers needs no look at the windows.
        const QuitPlan plan = planQuit(record->actions, false, {}, {});
        if (const auto *byEntry = std::get_if<QuitByEntryAction>(&plan)) {
            m_context.starter.startAction(record->path, byEntry->action);
            return;
        }
    }
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
    QList<XWindowId> closable = part.windows;
    closable.removeIf([this](XWindowId window) { return !m_requests.canBeAskedToClose(window); });
    const QuitPlan plan = planQuit({}, exportsQuit, part.windows, closable);
    if (std::holds_alternative<QuitByExportedAction>(plan))
        activateQuit(*part.exporter);
    else if (const auto *closing = std::get_if<QuitByClosing>(&plan))
        close(closing->windows, time);
}

void AppQuitter::activateQuit(const Exporter &exporter)
{
    auto call = actionsCall(exporter.busName, exporter.path, QStringLiteral("Activate"));
    call << quitAction << QVariantList() << QVariantMap();
    m_context.sessionBus.connection().send(call);
}

void AppQuitter::close(const QList<XWindowId> &windows, xcb_timestamp_t time) const
{
    for (const XWindowId window : windows)
        m_requests.close(window, time);
}

} // namespace moorline
