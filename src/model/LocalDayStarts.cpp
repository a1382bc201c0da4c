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

qint64 LocalDayStarts::startMs(const QDate& date) {
    if (!date.isValid())
        return 0; // an unset date counts as the epoch's day, never as a walk to it
    const qint64 day = date.toJulianDay();
    // A day far outside the walked range (a stray date in an imported file) is converted on
    // its own instead of walking the calendar all the way to it.
    if (!m_anchors.empty() && (day < m_anchors.begin()->first - kFarDays ||
                               day > m_anchors.rbegin()->first + kFarDays))
        return date.startOfDay().toMSecsSinceEpoch();
    if (m_anchors.empty()) {
        exact(day);
        return m_anchors.begin()->second;
    }
    // Extend the checked range in whole stretches until it covers the day.
    while (day < m_anchors.begin()->first) {
        const qint64 edge = m_anchors.begin()->first;
        verify(edge - kStretch, edge);
    }
    while (day > m_anchors.rbegin()->first) {
        const qint64 edge = m_anchors.rbegin()->first;
        verify(edge, edge + kStretch);
    }
    // The nearest anchor at or after the day; no offset changes between them.
    const auto anchor = m_anchors.lower_bound(day);
    return anchor->second - (anchor->first - day) * kDayMs;
}

} // namespace quill
