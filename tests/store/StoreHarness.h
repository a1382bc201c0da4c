#pragma once

#include "storage/DataFileCodec.h"
#include "storage/Persistence.h"
#include "store/AppStore.h"
#include "support/FakeServices.h"
#include "support/SampleSession.h"
#include "support/WarningCatcher.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace quill::test {

/// A store on fake services, driven in virtual time.
class StoreTest : public ::testing::Test {
protected:
    FakeServices fakes;
    std::unique_ptr<AppStore> store;

    void createStore() { store = std::make_unique<AppStore>(fakes.services()); }
    void advanceMs(qint64 ms) { fakes.scheduler->advance(ms); }
    void advanceSeconds(double s) { advanceMs(static_cast<qint64>(s * 1000)); }

    QString dataFile() const { return fakes.data->filePath(); }
    bool dataFileExists() const { return QFile::exists(dataFile()); }
    PersistedData readDataFile() const {
        QFile f(dataFile());
        EXPECT_TRUE(f.open(QIODevice::ReadOnly)) << dataFile().toStdString();
        auto decoded = DataFileCodec::decode(f.readAll());
        EXPECT_TRUE(decoded.has_value());
        return decoded.value_or(PersistedData{});
    }
    void writeDataFile(const QByteArray& bytes) {
        QDir().mkpath(fakes.data->directory());
        QFile f(dataFile());
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(bytes);
    }
    void writeData(const AppSettings& settings, const QList<StudySession>& sessions = {}) {
        writeDataFile(DataFileCodec::encode(settings, sessions));
    }
    void updateSettings(const std::function<void(AppSettings&)>& change) {
        store->editSettings(change);
    }
    /// Settings with a fixed reminder range and break, written before the store starts.
    void startWith(qint64 reminderMin, qint64 reminderMax, qint64 breakSeconds) {
        AppSettings s;
        s.reminderMinimumMinutes = reminderMin;
        s.reminderMaximumMinutes = reminderMax;
        s.microBreakSeconds = breakSeconds;
        writeData(s);
        createStore();
    }
    QDateTime now() const { return fakes.clock->now(); }
};

inline StudySession sessionAt(const QDateTime& start, qint64 focusedSeconds = 1500) {
    return sampleSession(start, focusedSeconds, focusedSeconds + 60);
}

} // namespace quill::test
