#pragma once

#include "platform/Platform.h"

#include <QUrl>
#include <optional>

QT_BEGIN_NAMESPACE
class QProcessEnvironment;
QT_END_NAMESPACE

namespace moorline {

enum class RunMode {
    /// The bar runs until it is told to quit.
    normal,
    /// Draws a preview image and ends.
    render,
    /// Imports the pinned applications of the desktop's dock, reports, and ends.
    importDock,
};

/// What this run of the program is for, as its environment says.
struct RunPlan {
    RunMode mode = RunMode::normal;
    /// Where the preview image goes; absent in other modes.
    std::optional<QString> previewPath;
    /// Where the picture of the live panel goes, after which a normal run ends; absent when none is asked for.
    std::optional<QString> snapshotPath;
    /// A server that stands in for all of the weather's public ones; absent, also for an empty name, when these
    /// are to be asked.
    std::optional<QUrl> weatherOrigin;
    bool debug = false;

    bool operator==(const RunPlan &) const = default;
};

/// The preview wins over the import, and both over a normal run.
[[nodiscard]] RunPlan runPlan(const QProcessEnvironment &environment);
/// Only a run that a person looks at is nothing without a display.
[[nodiscard]] DisplayNeed displayNeed(const RunPlan &plan);

} // namespace moorline
