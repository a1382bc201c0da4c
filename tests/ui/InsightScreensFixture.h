#pragma once

#include "storage/Persistence.h"
#include "store/AppStore.h"
#include "support/FakeServices.h"
#include "support/SampleSession.h"

#include <gtest/gtest.h>
#include <memory>

namespace quill::test {

/// A real store on fake services whose history is written to its data file before it starts,
/// as the app finds it at launch. The fake clock reads Thursday 2026-03-05 16:30 local time.
class InsightScreensTest : public ::testing::Test {
protected:
    FakeServices fakes;
    std::unique_ptr<AppStore> store;

    void startWith(const QList<StudySession>& sessions) {
        Persistence::save(fakes.data->directory(), AppSettings{}, sessions);
        store = std::make_unique<AppStore>(fakes.services());
    }
    static QDateTime today(int hour, int minute = 0) {
        return QDateTime(QDate(2026, 3, 5), QTime(hour, minute), Qt::LocalTime);
    }
    static StudySession session(const QDateTime& start, qint64 seconds = 1500,
                                const std::optional<QString>& task = std::nullopt,
                                qint64 rating = 4) {
        StudySession s = sampleSession(start, seconds, seconds + 120);
        s.taskName = task;
        s.focusRating = rating;
        return s;
    }
};

} // namespace quill::test
