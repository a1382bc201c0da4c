#pragma once

#include <QDate>
#include <QDateTime>

namespace quill {

/// The local date and hour of wall-clock instants for the step, which asks four times a second.
/// Converting to local time reads the zone (glibc checks /etc/localtime on every conversion),
/// so a result is reused until the next local hour begins, and for at most a minute, so a
/// change of the zone shows within that minute. A clock set back converts again at once.
class LocalTimeCache {
public:
    struct Fields {
        QDate date;
        int hour = 0;
    };

    Fields at(const QDateTime& instant);

private:
    Fields m_fields;
    qint64 m_validFromMs = 0;
    qint64 m_validUntilMs = 0; // empty until the first conversion
};

} // namespace quill
