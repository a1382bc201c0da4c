// Replays the fuzzer's seed corpus and every past crasher through the fuzzer's own checks,
// with the normal compiler, so a regression shows up without clang.
#include "fuzz/DataFileProperties.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

namespace quill::test {
namespace {

TEST(DataFileCorpus, EveryCommittedInputKeepsTheReaderAndWriterInAgreement) {
    int replayed = 0;
    for (const char* folder : {"corpus", "crashers"}) {
        const QDir dir(QStringLiteral(QUILL_FUZZ_DIR "/") + QLatin1String(folder));
        for (const QFileInfo& entry : dir.entryInfoList(QDir::Files)) {
            QFile file(entry.filePath());
            ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << entry.filePath().toStdString();
            EXPECT_EQ(dataFilePropertyFailure(file.readAll()), "")
                << entry.filePath().toStdString();
            ++replayed;
        }
    }
    EXPECT_GE(replayed, 10) << "the committed corpus is missing";
}

} // namespace
} // namespace quill::test
