#include "model/LocalDayStarts.h"

#include <QDateTime>

namespace quill {

qint64 LocalDayStarts::exact(qint64 julianDay) {
    auto it = m_anchors.find(julianDay);
    if (it == m_anchors.end())
        it = m_anchors
                 .emplace(julianDay,
                          QDate::fromJulianDay(julianDay).startOfDay().toMSecsSinceEpoch())
                 .first;
    return it->second;
}

void LocalDayStarts::verify(qint64 earlierDay, qint64 laterDay) {
    const qint64 span = exact(laterDay) - exact(earlierDay);
    if (laterDay - earlierDay <= 1 || span == (laterDay - earlierDay) * kDayMs)
        return;
    const qint64 middle = earlierDay + (laterDay - earlierDay) / 2;
    exact(middle);
    verify(earlierDay, middle);
    verify(middle, laterDay);
}

LocalDayStarts::Island& LocalDayStarts::islandFor(qint64 day) {
    for (Island& island : m_islands)
        if (day >= island.first - kFarDays && day <= island.last + kFarDays)
            return island;
    // A day far from every checked range (a stray date in an imported file, or the first
    // day asked for) starts a range of its own instead of a walk all the way to it.
    exact(day);
    return m_islands.emplace_back(Island{day, day});
}

qint64 LocalDayStarts::startMs(const QDate& date) {
    if (!date.isValid())
        return 0; // an unset date counts as the epoch's day, never as a walk to it
    const qint64 day = date.toJulianDay();
    Island& island = islandFor(day);
    // Extend the checked range in whole stretches until it covers the day.
    while (day < island.first) {
        verify(island.first - kStretch, island.first);
        island.first -= kStretch;
    }
    while (day > island.last) {
        verify(island.last, island.last + kStretch);
        island.last += kStretch;
    }
    // The nearest anchor at or after the day. It lies in a checked stretch of this range,
    // even when it was set by another range grown into this one, so no offset changes
    // between them.
    const auto anchor = m_anchors.lower_bound(day);
    return anchor->second - (anchor->first - day) * kDayMs;
}

} // namespace quill
