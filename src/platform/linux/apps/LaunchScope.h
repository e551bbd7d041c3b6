#pragma once

#include <QList>
#include <QString>

namespace moorline {

class Bus;

/// Has the user's service manager, where there is one on the bus, keep these processes as an application of its own
/// beside this program: what becomes of this program is nothing to them then. Nobody waits for it.
void moveToOwnScope(const Bus &bus, const QString &entryId, const QString &description, const QList<qint64> &processes);

} // namespace moorline
