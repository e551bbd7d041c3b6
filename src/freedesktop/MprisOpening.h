#pragma once

#include <QList>
#include <QStringList>
#include <optional>
#include <variant>

namespace moorline {

/// A media player, as far as it is a matter of bringing it to the front.
struct MprisOrigin {
    /// The path of its desktop entry. Absent where it names none that is installed.
    std::optional<QString> entryPath = std::nullopt;
    /// Absent while it is not known.
    std::optional<qint64> process = std::nullopt;
    bool canRaise = false;
};

/// An application with windows, as far as they may be a player's.
struct WindowedApplication {
    /// Absent where its windows belong to no desktop entry.
    std::optional<QString> entryPath = std::nullopt;
    /// Absent where there is none, or more than one.
    std::optional<qint64> process = std::nullopt;
    bool isTerminated = false;
};

/// How a player is brought to the front.
struct OpenByActivation {
    /// The place of the application.
    qsizetype application = 0;

    bool operator==(const OpenByActivation &) const = default;
};
struct OpenByRaise {
    bool operator==(const OpenByRaise &) const = default;
};
struct OpenByLaunch {
    QString entryPath;

    bool operator==(const OpenByLaunch &) const = default;
};
using MprisOpening = std::variant<OpenByActivation, OpenByRaise, OpenByLaunch>;

/// The windows of its desktop entry, of several those of its process, else those of its process alone. One without
/// windows is asked to show itself, else started. Absent where all of that cannot be.
[[nodiscard]] std::optional<MprisOpening> mprisOpening(
    const MprisOrigin &player, const QList<WindowedApplication> &applications);

/// The ids of the desktop entry that a player may mean by what it says, in the order in which they are looked for.
[[nodiscard]] QStringList mprisEntryIds(const QString &told);

} // namespace moorline
