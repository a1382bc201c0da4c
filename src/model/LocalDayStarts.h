#pragma once

#include <QDate>
#include <map>
#include <vector>

namespace quill {

/// The first instant of local calendar days, for walks over many consecutive days.
///
/// A local-time conversion costs a time-zone lookup (with TZ unset, a stat of /etc/localtime
/// each time). Most days are exactly 24 hours long, so days are derived from a few exact
/// anchors: a stretch between two anchors whose length is a whole number of 24-hour days
/// holds no change of UTC offset, and only stretches that do are split further. This assumes
/// no zone changes its offset and back again within a month.
class LocalDayStarts {
public:
    /// Milliseconds since the epoch at which `day` begins in local time.
    qint64 startMs(const QDate& day);

private:
    /// Julian days whose every stretch between anchors has been checked.
    struct Island {
        qint64 first;
        qint64 last;
    };

    qint64 exact(qint64 julianDay);
    /// The checked range that reaches the day within kFarDays, or a new one at the day.
    Island& islandFor(qint64 day);
    /// Makes the days between two exact anchors derivable from the later one.
    void verify(qint64 earlierDay, qint64 laterDay);

    static constexpr qint64 kDayMs = 24 * 3600 * 1000;
    static constexpr qint64 kStretch = 32;  ///< days between anchors before checking
    static constexpr qint64 kFarDays = 800; ///< beyond this, a day starts a range of its own
    std::map<qint64, qint64> m_anchors;     ///< julian day → exact start
    std::vector<Island> m_islands;          ///< a few at most: strays are rare
};

} // namespace quill
