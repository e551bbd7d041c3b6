#include "platform/linux/apps/PresentTime.h"

#include "freedesktop/LaunchRules.h"
#include "platform/linux/x11/UserTime.h"
#include "platform/linux/x11/XConnection.h"

namespace moorline {

quint32 presentTime(const UserTime &userTime, XConnection &connection)
{
    const auto deed = userTime.last();
    return deed && isStillMeant(deed->age) ? deed->time : connection.serverTime();
}

} // namespace moorline
