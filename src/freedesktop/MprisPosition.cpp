#include "freedesktop/MprisPosition.h"

#include <QStringList>
#include <algorithm>

namespace moorline {

namespace {

double withinLength(double position, double duration)
{
    return duration > 0 ? std::min(position, duration) : position;
}

} // namespace

double MprisPosition::correct(const Told &told, std::chrono::milliseconds uptime)
{
    const bool isStuck = isDisbelieved(told);
    const double position = isStuck ? runOn(told, uptime) : told.position;
    m_last = Record{.told = told, .position = position, .uptime = uptime, .isStuck = isStuck};
    return position;
}

void MprisPosition::seek(double position, std::chrono::milliseconds uptime)
{
    if (!m_last)
        return;
    m_last->position = position;
    m_last->uptime = uptime;
    m_last->isStuck = true;
}

double MprisPosition::lastTold(const QString &track) const
{
    return m_last && m_last->told.track == track ? m_last->told.position : 0;
}

bool MprisPosition::isDisbelieved(const Told &told) const
{
    if (!m_last || m_last->told.position != told.position)
        return false;
    // One that was caught does not get better by a pause.
    return m_last->isStuck || (m_last->told.isPlaying && told.isPlaying);
}

double MprisPosition::runOn(const Told &told, std::chrono::milliseconds uptime) const
{
    if (m_last->told.track != told.track)
        return 0;
    if (!m_last->told.isPlaying)
        return m_last->position;
    const double elapsed = std::chrono::duration<double>(uptime - m_last->uptime).count();
    return withinLength(m_last->position + elapsed, told.duration);
}

bool isMprisSilence(const QString &errorName)
{
    constexpr QLatin1StringView standard("org.freedesktop.DBus.Error.");
    const QStringList kinds{QStringLiteral("NoReply"), QStringLiteral("Disconnected"), QStringLiteral("ServiceUnknown"),
        QStringLiteral("NameHasNoOwner")};
    return errorName.startsWith(standard) && kinds.contains(errorName.sliced(standard.size()));
}

} // namespace moorline
