#pragma once

#include <QByteArray>
#include <ctime>

namespace moorline::test {

/// Makes a value of "TZ" the system's time zone for as long as it lives.
class TimeZoneScope final {
public:
    explicit TimeZoneScope(const QByteArray &zone)
        : m_previous(qgetenv("TZ"))
        , m_wasSet(qEnvironmentVariableIsSet("TZ"))
    {
        qputenv("TZ", zone);
        tzset();
    }
    ~TimeZoneScope()
    {
        if (m_wasSet)
            qputenv("TZ", m_previous);
        else
            qunsetenv("TZ");
        tzset();
    }
    Q_DISABLE_COPY_MOVE(TimeZoneScope)

private:
    QByteArray m_previous;
    bool m_wasSet;
};

} // namespace moorline::test
