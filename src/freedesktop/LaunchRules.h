#pragma once

#include "freedesktop/EntryRecord.h"

#include <chrono>
#include <functional>

namespace moorline {

/// Whether an application started by this command is handed files: the command says where they go.
[[nodiscard]] bool takesFiles(const QString &exec);

/// The environment of what is started: that of the program, without what was meant for itself alone, and with these.
/// Each is a "NAME=value".
[[nodiscard]] QList<QByteArray> launchEnvironment(
    const QList<QByteArray> &inherited, const QList<QByteArray> &additions);

/// Whether what the user did to the program's windows so long ago is what is being answered now. What is asked for
/// later came another way, by the tray or the bus, and a window manager would take the time for one from before the
/// user went on to other windows.
[[nodiscard]] bool isStillMeant(std::chrono::milliseconds age);

/// Names one launch, and says when the user asked for it, by the X server's clock. `number` tells it from the others of
/// this process.
[[nodiscard]] QByteArray startupId(const QString &entryId, qint64 process, quint64 number, quint32 userTime);

/// The command that runs another one in a terminal, to be put before it. Absent where none of those is there that GLib
/// does not know. `isThere` says whether there is a program of a name.
[[nodiscard]] std::optional<QString> terminalPrefix(const std::function<bool(const QString &name)> &isThere);

/// The command with the place of its entry filled in, which GLib knows only of entries that it read itself.
[[nodiscard]] QString withPlace(const QString &exec, const QString &path);

/// "new: ..." or "remove: ..." of the startup notification protocol.
[[nodiscard]] QByteArray startupBegun(const EntryRecord &record, const QByteArray &startupId, int screen);
[[nodiscard]] QByteArray startupEnded(const QByteArray &startupId);

/// Whether the application is started by a call over the bus. Its id has to be the name of a service, too.
[[nodiscard]] bool isStartedByBus(const EntryRecord &record);
/// Where such an application has its object.
[[nodiscard]] QString busPath(const QString &entryId);
/// Whether an answer says that nobody took the call, so that it was not started. `errorName` is D-Bus's.
[[nodiscard]] bool isNobodyThere(const QString &errorName);

/// The unit that a service manager keeps the processes of one launch in.
[[nodiscard]] QString scopeName(const QString &entryId, quint32 random);

} // namespace moorline
