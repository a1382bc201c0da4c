#pragma once

#include <QDate>
#include <QTimeZone>
#include <map>
#include <vector>

namespace quill {

/// The first instant of local calendar days, for walks over many consecutive days.
///
/// A day starts at the earliest instant whose local date is that day (or a later one, so a
/// day a zone skipped starts, and ends, where the next day starts). On a day whose midnight
/// repeats after falling back, that is the first midnight. Offsets come from the system zone's
/// transitions, read once per stretch of days and kept, so a walk over years of history costs
/// a few time-zone lookups, not one per day.
class LocalDayStarts {
public:
    LocalDayStarts();

    /// Milliseconds since the epoch at which `day` begins in local time.
    qint64 startMs(const QDate& day);

private:
    /// A run of instants from `fromMs` on with one UTC offset.
    struct Segment {
        qint64 fromMs;
        qint64 offsetMs;
    };
    /// The offsets over every instant that can begin one of a block of days.
    using Segments = std::vector<Segment>;

    const Segments& segmentsFor(qint64 block);

    static constexpr qint64 kDayMs = 24 * 3600 * 1000;
    static constexpr qint64 kBlockDays = 256;
    /// Wider than any UTC offset, so the instants a day can start at lie within its block's.
    static constexpr qint64 kMarginMs = 2 * kDayMs;

    QTimeZone m_zone;
    std::map<qint64, Segments> m_blocks; ///< block of days → its segments
    qint64 m_lastBlock = 0;
    const Segments* m_last = nullptr;
};

} // namespace quill
