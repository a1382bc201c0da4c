#include "LocalTimeCache.h"

#include <algorithm>

namespace quill {

LocalTimeCache::Fields LocalTimeCache::at(const QDateTime& instant) {
    const qint64 ms = instant.toMSecsSinceEpoch();
    if (ms >= m_validFromMs && ms < m_validUntilMs)
        return m_fields;
    constexpr qint64 kLongestReuseMs = 60'000;
    const QDateTime local = instant.toLocalTime();
    const QTime time = local.time();
    const qint64 toNextHourMs =
        qint64(3'600'000) - (time.minute() * 60'000LL + time.second() * 1'000LL + time.msec());
    m_fields = {local.date(), time.hour()};
    m_validFromMs = ms;
    m_validUntilMs = ms + std::min(toNextHourMs, kLongestReuseMs);
    return m_fields;
}

} // namespace quill
