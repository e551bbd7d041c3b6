#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <memory>
#include <optional>

namespace moorline {

class LaunchHold;

/// How something is to be started.
struct LaunchManner {
    /// All of it, as "NAME=value".
    QList<QByteArray> environment;
    /// The working directory, where the entry names none that is there.
    QByteArray home;
    /// Where each process waits before it runs anything; null where it does not.
    std::shared_ptr<const LaunchHold> hold = nullptr;
};

struct LaunchOutcome {
    /// What went wrong.
    std::optional<QString> error = std::nullopt;
    /// Whoever was started before that. They are children of this process, and it has to see them end.
    QList<qint64> processes = {};
};

/// Runs the command of the entry at `path` with these files, by their encoded addresses, in as many processes as it
/// asks for. Nothing is asked of a bus. Holds up its thread as long as the disk takes.
[[nodiscard]] LaunchOutcome launchEntry(const QString &path, const QList<QByteArray> &uris, const LaunchManner &manner);

/// Runs the command of one of the entry's further actions.
[[nodiscard]] LaunchOutcome launchAction(const QString &path, const QString &action, const LaunchManner &manner);

/// Runs a program, by its path or by its name in PATH.
[[nodiscard]] LaunchOutcome launchProgram(
    const QString &program, const QStringList &arguments, const LaunchManner &manner);

} // namespace moorline
