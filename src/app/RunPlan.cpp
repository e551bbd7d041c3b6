#include "app/RunPlan.h"

#include <QProcessEnvironment>

namespace moorline {

namespace {

std::optional<QString> valueIfSet(const QProcessEnvironment &environment, const QString &name)
{
    return environment.contains(name) ? std::optional(environment.value(name)) : std::nullopt;
}

} // namespace

RunPlan runPlan(const QProcessEnvironment &environment)
{
    RunPlan plan;
    plan.debug = environment.contains(QStringLiteral("MOORLINE_DEBUG"));
    const QString origin = environment.value(QStringLiteral("MOORLINE_WEATHER_ORIGIN"));
    if (!origin.isEmpty())
        plan.weatherOrigin = QUrl(origin);
    plan.previewPath = valueIfSet(environment, QStringLiteral("MOORLINE_RENDER"));
    if (plan.previewPath)
        plan.mode = RunMode::render;
    else if (environment.contains(QStringLiteral("MOORLINE_IMPORT_DOCK")))
        plan.mode = RunMode::importDock;
    else
        plan.snapshotPath = valueIfSet(environment, QStringLiteral("MOORLINE_SNAPSHOT"));
    return plan;
}

DisplayNeed displayNeed(const RunPlan &plan)
{
    const bool isWatched = plan.mode == RunMode::normal && !plan.snapshotPath;
    return isWatched ? DisplayNeed::required : DisplayNeed::optional;
}

} // namespace moorline
