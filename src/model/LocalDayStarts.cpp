#include "model/LocalDayStarts.h"

#include <QDateTime>
#include <algorithm>

namespace quill {

namespace {
constexpr qint64 kEpochJulianDay = 2440588; // 1970-01-01
/// Days beyond this distance from the epoch are far outside any time-zone data (and near
/// where milliseconds overflow); they get the offset of their own midnight.
constexpr qint64 kFarDays = 100'000'000;

qint64 floorDiv(qint64 a, qint64 b) {
    return a / b - ((a % b != 0) && ((a < 0) != (b < 0)) ? 1 : 0);
}

QDateTime utc(qint64 ms) {
    return QDateTime::fromMSecsSinceEpoch(ms, QTimeZone::utc());
}
} // namespace

LocalDayStarts::LocalDayStarts() : m_zone(QTimeZone::systemTimeZone()) {}

const LocalDayStarts::Segments& LocalDayStarts::segmentsFor(qint64 block) {
    if (m_last && block == m_lastBlock)
        return *m_last;
    auto it = m_blocks.find(block);
    if (it == m_blocks.end()) {
        const qint64 first = block * kBlockDays * kDayMs - kMarginMs;
        const qint64 last = (block + 1) * kBlockDays * kDayMs + kMarginMs;
        Segments segments{{first, qint64(m_zone.offsetFromUtc(utc(first))) * 1000}};
        for (const QTimeZone::OffsetData& change : m_zone.transitions(utc(first + 1), utc(last)))
            segments.push_back(
                {change.atUtc.toMSecsSinceEpoch(), qint64(change.offsetFromUtc) * 1000});
        it = m_blocks.emplace(block, std::move(segments)).first;
    }
    m_lastBlock = block;
    m_last = &it->second;
    return *m_last;
}

qint64 LocalDayStarts::startMs(const QDate& date) {
    if (!date.isValid())
        return 0; // an unset date counts as the epoch's day
    const qint64 day = date.toJulianDay() - kEpochJulianDay;
    if (day > kFarDays || day < -kFarDays) {
        const qint64 midnight = day * kDayMs;
        return midnight - qint64(m_zone.offsetFromUtc(utc(midnight))) * 1000;
    }
    // Local midnight read as if it were UTC; an instant's local date is `date` or later once
    // the instant plus its offset reaches it.
    const qint64 midnight = day * kDayMs;
    const Segments& segments = segmentsFor(floorDiv(day, kBlockDays));
    // Runs in time order: the first one holding such an instant holds the earliest.
    auto run = std::upper_bound(segments.begin(), segments.end(), midnight - kMarginMs,
                                [](qint64 t, const Segment& s) { return t < s.fromMs; });
    if (run != segments.begin())
        --run;
    for (; run != segments.end(); ++run) {
        const qint64 candidate = std::max(run->fromMs, midnight - run->offsetMs);
        const auto next = run + 1;
        if (next == segments.end() || candidate < next->fromMs)
            return candidate;
    }
    return midnight; // not reached: the last run is open-ended
}

} // namespace quill
