// Replays the fuzzer's seed corpus and every past crasher through the fuzzer's own checks,
// with the normal compiler, so a regression shows up without clang.
#include "fuzz/DataFileProperties.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>
#include <random>

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

// What the fuzzer does at length, a little on every run: damaged copies of the corpus either
// fail as a whole or load data that survives the writer.
TEST(DataFileCorpus, DamagedInputsNeverCrashAndWhatLoadsIsStable) {
    std::mt19937 rng(7);
    const char alphabet[] = "{}[]\",:0123456789.eE+-tfnul\\ \n\x80\xff\xe4";
    const QDir dir(QStringLiteral(QUILL_FUZZ_DIR "/corpus"));
    for (const QFileInfo& entry : dir.entryInfoList(QDir::Files)) {
        QFile file(entry.filePath());
        ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << entry.filePath().toStdString();
        const QByteArray seed = file.readAll();
        for (int round = 0; round < 300; ++round) {
            QByteArray text = seed;
            for (int edits = 1 + int(rng() % 3); edits > 0 && !text.isEmpty(); --edits) {
                const qsizetype at = qsizetype(rng() % quint32(text.size()));
                const char c = alphabet[rng() % (sizeof alphabet - 1)];
                switch (rng() % 4) {
                case 0:
                    text[at] = c;
                    break;
                case 1:
                    text.remove(at, 1 + qsizetype(rng() % 8));
                    break;
                case 2:
                    text.insert(at, c);
                    break;
                default:
                    text.truncate(at);
                }
            }
            ASSERT_EQ(dataFilePropertyFailure(text), "") << text.toStdString();
        }
    }
}

} // namespace
} // namespace quill::test
