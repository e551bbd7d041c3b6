#pragma once

#include <QtGlobal>

namespace moorline {

class UserTime;
class XConnection;

/// When the user asked for what is being done now, by the X server's clock. Waits for the server where nothing that was
/// done to the program's own windows can be meant.
[[nodiscard]] quint32 presentTime(const UserTime &userTime, XConnection &connection);

} // namespace moorline
