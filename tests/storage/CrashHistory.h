#pragma once

#include "support/SampleSession.h"

#include <QList>

namespace quill::test {

/// One of two large histories the crash test alternates between; the same on both sides of
/// the process boundary.
inline QList<StudySession> crashHistory(int variant, int count = 1500) {
    QList<StudySession> list;
    list.reserve(count);
    const QDateTime first(QDate(2024, 1, 1), QTime(8, 0), Qt::UTC);
    for (int i = 0; i < count; ++i) {
        StudySession s = sampleSession(first.addSecs(qint64(i) * 3600));
        s.id = QUuid(uint(i), 0, 0, 0, 0, 0, 0, 0, 0, 0, uchar(variant));
        s.note = QStringLiteral("第 %1 轮，版本 %2").arg(i).arg(variant);
        for (int e = 0; e < 6; ++e)
            s.events.append(FocusEvent{QUuid(uint(i), ushort(e), 0, 0, 0, 0, 0, 0, 0, 0, 1),
                                       s.startedAt.addSecs(e * 200), e * 200,
                                       FocusEventKind::reminder});
        list.append(s);
    }
    return list;
}

} // namespace quill::test
