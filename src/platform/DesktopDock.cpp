#include "platform/DesktopDock.h"

#include <algorithm>

namespace moorline {

namespace {

using Choice = DesktopDockRule::Choice;
using Edge = DesktopDock::Edge;

/// The edge that a panel keeps more of than the strip it is called back by. One at the top is never where the bar is.
std::optional<Edge> reservedEdge(const QMarginsF &reserved)
{
    if (reserved.bottom() > callBackStrip)
        return Edge::bottom;
    if (reserved.left() > callBackStrip)
        return Edge::left;
    if (reserved.right() > callBackStrip)
        return Edge::right;
    return std::nullopt;
}

bool isOn(const QRectF &screen, const DesktopDock &dock)
{
    return !dock.frame || dock.frame->intersects(screen);
}

bool isTuckedAway(const DesktopDock &dock)
{
    const qreal most = std::max({dock.reserved.bottom(), dock.reserved.left(), dock.reserved.right()});
    return !dock.hiding && most > 0 && most <= callBackStrip;
}

bool isInTheWay(const Choice &dock)
{
    return dock.edge == Edge::bottom && !dock.hides;
}

bool hasSettings(const Choice &dock)
{
    return dock.dock.hiding.has_value();
}

bool stays(const Choice &dock)
{
    return !dock.hides;
}

QString orientationText(Edge edge)
{
    switch (edge) {
    case Edge::bottom:
        return QStringLiteral("bottom");
    case Edge::left:
    // The domain has no word for the top. Any side edge says what counts: the dock is not at the bottom.
    case Edge::top:
        return QStringLiteral("left");
    case Edge::right:
        return QStringLiteral("right");
    }
    Q_UNREACHABLE();
}

} // namespace

std::optional<Choice> DesktopDockRule::choose(const QList<DesktopDock> &docks, const QRectF &screen)
{
    rememberTuckedAway(docks);
    QList<Choice> candidates;
    for (const DesktopDock &dock : docks) {
        if (isOn(screen, dock))
            candidates.append(judged(dock));
    }
    for (const auto matters : {isInTheWay, hasSettings, stays}) {
        const auto found = std::find_if(candidates.begin(), candidates.end(), matters);
        if (found != candidates.end())
            return *found;
    }
    return std::nullopt;
}

Choice DesktopDockRule::judged(const DesktopDock &dock) const
{
    if (dock.hiding)
        return {dock, dock.edge.value_or(Edge::bottom), *dock.hiding == DesktopDock::Hiding::byItself};
    const auto edge = reservedEdge(dock.reserved);
    return {dock, edge.value_or(Edge::bottom), !edge || m_hidingPanels.contains(dock.id)};
}

void DesktopDockRule::rememberTuckedAway(const QList<DesktopDock> &docks)
{
    QSet<quint64> hiding;
    for (const DesktopDock &dock : docks) {
        if (isTuckedAway(dock) || m_hidingPanels.contains(dock.id))
            hiding.insert(dock.id);
    }
    m_hidingPanels = hiding;
}

QVariant dockPreference(const std::optional<Choice> &dock, const QString &key)
{
    const Choice told = dock.value_or(Choice());
    if (key == QLatin1StringView("orientation"))
        return orientationText(told.edge);
    // Nothing at the top ever comes to where the bar is, so it need not make way.
    if (key == QLatin1StringView("autohide"))
        return told.hides || told.edge == Edge::top;
    if (key == QLatin1StringView("autohide-delay") && told.dock.revealDelay)
        return *told.dock.revealDelay;
    return {};
}

} // namespace moorline
