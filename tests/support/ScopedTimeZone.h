#pragma once

#include <QByteArray>
#include <QtGlobal>
#include <time.h>

namespace quill::test {

/// Runs a test in another local time zone, restoring the one CTest set.
class ScopedTimeZone {
public:
    explicit ScopedTimeZone(const char* zone)
        : m_had(qEnvironmentVariableIsSet("TZ")), m_old(qgetenv("TZ")) {
        qputenv("TZ", zone);
        tzset();
    }
    ~ScopedTimeZone() {
        if (m_had)
            qputenv("TZ", m_old);
        else
            qunsetenv("TZ");
        tzset();
    }
    ScopedTimeZone(const ScopedTimeZone&) = delete;
    ScopedTimeZone& operator=(const ScopedTimeZone&) = delete;

private:
    bool m_had;
    QByteArray m_old;
};

} // namespace quill::test
