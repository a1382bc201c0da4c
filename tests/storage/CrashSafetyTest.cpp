// A child saving a large history in a loop is killed with SIGKILL at random moments: the file
// must always hold the old or the new content, and the next start removes whatever
// temporary the kill left.
#include "CrashHistory.h"
#include "storage/DataFileCodec.h"
#include "storage/Persistence.h"
#include "store/AppStore.h"
#include "support/FakeServices.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <csignal>
#include <gtest/gtest.h>

namespace quill::test {
namespace {

TEST(CrashSafety, KilledSavesLeaveTheOldOrTheNewFileAndNoStrayTemporary) {
    constexpr int kKills = 50;
    FakeServices fakes;
    const QString directory = fakes.data->directory();
    const QByteArray contents[2] = {DataFileCodec::encode(AppSettings{}, crashHistory(0)),
                                    DataFileCodec::encode(AppSettings{}, crashHistory(1))};
    ASSERT_TRUE(Persistence::save(directory, AppSettings{}, crashHistory(0)));

    QRandomGenerator random(20260305);
    int killedMidWrite = 0;
    for (int kill = 0; kill < kKills; ++kill) {
        QProcess child;
        child.start(QStringLiteral(QUILL_SAVE_LOOP), {directory});
        ASSERT_TRUE(child.waitForStarted());
        // Once it is saving, the kill lands at a random moment of the next few writes: the
        // wait is what picks the moment, nothing waits for a result here.
        ASSERT_TRUE(child.waitForReadyRead(10'000)) << "the child never saved";
        child.waitForReadyRead(random.bounded(1, 40));
        ::kill(child.processId(), SIGKILL);
        ASSERT_TRUE(child.waitForFinished());

        QFile file(Persistence::dataFilePath(directory));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << "kill " << kill;
        const QByteArray bytes = file.readAll();
        ASSERT_TRUE(bytes == contents[0] || bytes == contents[1])
            << "kill " << kill << ": a torn file of " << bytes.size() << " bytes";

        const QStringList before = QDir(directory).entryList(QDir::Files | QDir::Hidden);
        killedMidWrite += before.size() > 1;
        { AppStore nextStart(fakes.services()); } // start-up clears what the kill left
        EXPECT_EQ(QDir(directory).entryList(QDir::Files | QDir::Hidden),
                  QStringList{QStringLiteral("focus-data.json")})
            << "kill " << kill << " left " << before.join(' ').toStdString();
    }
    RecordProperty("killedMidWrite", killedMidWrite);
}

} // namespace
} // namespace quill::test
