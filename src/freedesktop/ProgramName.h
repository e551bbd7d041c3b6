#pragma once

#include <QString>
#include <QStringList>
#include <optional>

namespace moorline {

/// What a command runs in the end, behind interpreters and wrappers.
struct ProgramName {
    enum class Kind {
        /// A program or a script, by path or by name.
        file,
        flatpak,
        snap,
        /// An application that the session bus starts.
        busName,
    };

    Kind kind = Kind::file;
    QString name;
    /// What it is given.
    QStringList arguments = {};

    bool operator==(const ProgramName &) const = default;
};

/// Absent where only the name of an interpreter or a wrapper is known, which says nothing of the program.
[[nodiscard]] std::optional<ProgramName> programOf(const QStringList &command);

/// Whether a program of this name, or at this path, runs another one.
[[nodiscard]] bool isInterpreter(const QString &name);
[[nodiscard]] bool isShell(const QString &name);

/// The last part of a path.
[[nodiscard]] QString baseName(const QString &path);

} // namespace moorline
