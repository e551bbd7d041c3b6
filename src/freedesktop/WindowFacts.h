#pragma once

#include <QString>
#include <QStringList>
#include <optional>

namespace moorline {

/// Names a window on the X server.
using XWindowId = quint32;

/// What a window and the window manager say of it, as far as it tells whose it is and how it is shown.
struct WindowFacts {
    XWindowId window = 0;
    /// The two parts of WM_CLASS.
    QString instanceName = {};
    QString className = {};
    /// _GTK_APPLICATION_ID.
    QString applicationId = {};
    /// Absent for a window of another machine.
    std::optional<qint64> process = std::nullopt;
    /// Normal, a dialog, or of no kind.
    bool isOrdinary = true;
    bool skipsTaskbar = false;
    /// Zero for none.
    XWindowId transientFor = 0;
    /// Absent for a window on all desktops.
    std::optional<quint32> desktop = std::nullopt;
    bool isMinimised = false;

    bool operator==(const WindowFacts &) const = default;
};

/// What the system says of the process behind a window. A text that it does not give is empty.
struct ProcessFacts {
    qint64 process = 0;
    std::optional<qint64> parent = std::nullopt;
    /// The parent's command line; empty where it is not known.
    QStringList parentCommand = {};
    /// The path of the program.
    QString executable = {};
    QStringList command = {};
    /// The sandboxed application that it is part of.
    QString flatpakId = {};
    QString snapName = {};
    /// The path of a desktop entry, as BAMF_DESKTOP_FILE_HINT in its environment has it.
    QString hintedEntry = {};
    /// GIO_LAUNCHED_DESKTOP_FILE and its _PID, which children inherit.
    QString launchedEntry = {};
    std::optional<qint64> launchedProcess = std::nullopt;

    bool operator==(const ProcessFacts &) const = default;
};

} // namespace moorline
