#include "freedesktop/OpenApplications.h"

#include "freedesktop/TaskbarRule.h"

namespace moorline {

namespace {

QString keyOf(const WindowFacts &window, const std::optional<QString> &entry)
{
    if (entry)
        return QStringLiteral("entry ") + *entry;
    if (window.process)
        return QStringLiteral("process ") + QString::number(*window.process);
    if (!window.className.isEmpty())
        return QStringLiteral("class ") + window.className;
    return QStringLiteral("window ") + QString::number(window.window);
}

/// The process of all of them, where they have one and the same.
void noteProcess(OpenApplication &application, const WindowFacts &window)
{
    const bool isFirst = application.windows.isEmpty();
    if (isFirst)
        application.process = window.process;
    else if (application.process != window.process)
        application.process.reset();
}

} // namespace

QList<OpenApplication> openApplications(const QList<WindowFacts> &windows, const QHash<XWindowId, QString> &entries)
{
    const QSet<XWindowId> shown = taskbarWindows(windows);
    QList<OpenApplication> applications;
    QHash<QString, qsizetype> places;
    for (const WindowFacts &window : windows) {
        const auto found = entries.constFind(window.window);
        const std::optional<QString> entry = found == entries.constEnd() ? std::nullopt : std::optional(*found);
        const QString key = keyOf(window, entry);
        const qsizetype place = places.value(key, applications.size());
        if (place == applications.size()) {
            places.insert(key, place);
            applications.append({.key = key, .entry = entry});
        }
        OpenApplication &application = applications[place];
        noteProcess(application, window);
        application.windows.append(window.window);
        if (shown.contains(window.window))
            application.taskbarWindows.append(window.window);
    }
    return applications;
}

} // namespace moorline
