#include "audio/music/DesktopEntryLauncher.h"
#include "EventLoopWait.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace quill;
using quill::test::waitUntil;

namespace {

struct ExecCase {
    const char* name;
    QString entry;
    QStringList command;
};

class ExecParsing : public ::testing::TestWithParam<ExecCase> {};

QString entry(const QString& execLine) {
    return u"[Desktop Entry]\nType=Application\nName=网易云音乐\n"_qs + execLine + u"\n"_qs;
}

} // namespace

TEST_P(ExecParsing, GivesProgramAndArguments) {
    EXPECT_EQ(DesktopEntryLauncher::commandFromDesktopEntry(GetParam().entry), GetParam().command);
}

INSTANTIATE_TEST_SUITE_P(
    DesktopEntries, ExecParsing,
    ::testing::Values(
        ExecCase{"FieldCodeDropped",
                 entry(u"Exec=netease-cloud-music %U"_qs),
                 {u"netease-cloud-music"_qs}},
        ExecCase{"QuotedProgramWithBlanks",
                 entry(u"Exec=\"/opt/My App/run\" --flag %f"_qs),
                 {u"/opt/My App/run"_qs, u"--flag"_qs}},
        ExecCase{"PercentEscape",
                 entry(u"Exec=env A=1 app --x=%%d"_qs),
                 {u"env"_qs, u"A=1"_qs, u"app"_qs, u"--x=%d"_qs}},
        ExecCase{"EscapedQuoteInsideQuotes",
                 entry(u"Exec=\"a \\\\\"b\\\\\"\" c"_qs),
                 {u"a \"b\""_qs, u"c"_qs}},
        ExecCase{"EmptyQuotedArgumentKept",
                 entry(u"Exec=app \"\" end"_qs),
                 {u"app"_qs, u""_qs, u"end"_qs}},
        ExecCase{"BlanksAroundEquals",
                 entry(u"Exec = yesplaymusic  --no-sandbox"_qs),
                 {u"yesplaymusic"_qs, u"--no-sandbox"_qs}},
        ExecCase{"NoExec", entry(u"TryExec=app"_qs), {}},
        ExecCase{"OtherGroupIgnored",
                 u"[Desktop Action pause]\nExec=app --pause\n[Desktop Entry]\nExec=app\n"_qs,
                 {u"app"_qs}},
        ExecCase{"ActionAfterMainGroupIgnored",
                 u"[Desktop Entry]\nName=x\n[Desktop Action play]\nExec=app --play\n"_qs,
                 {}},
        ExecCase{"CrLfLines", u"[Desktop Entry]\r\nExec=app %u\r\n"_qs, {u"app"_qs}},
        ExecCase{"Garbage", u"\x01\x02 not an entry [ ] = %"_qs, {}}),
    [](const ::testing::TestParamInfo<ExecCase>& info) { return info.param.name; });

class DesktopEntryLaunch : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(m_home.isValid());
        m_oldHome = qgetenv("XDG_DATA_HOME");
        m_oldDirs = qgetenv("XDG_DATA_DIRS");
        qputenv("XDG_DATA_HOME", m_home.path().toUtf8());
        qputenv("XDG_DATA_DIRS", m_home.filePath(u"none"_qs).toUtf8());
        QDir(m_home.path()).mkpath(u"applications"_qs);
    }
    void TearDown() override {
        qputenv("XDG_DATA_HOME", m_oldHome);
        qputenv("XDG_DATA_DIRS", m_oldDirs);
    }
    void writeEntry(const QString& file, const QString& exec) {
        QFile f(m_home.filePath(u"applications/"_qs + file));
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(entry(exec).toUtf8());
    }

    QTemporaryDir m_home;
    QByteArray m_oldHome, m_oldDirs;
};

TEST_F(DesktopEntryLaunch, StartsTheFirstInstalledEntryDetached) {
    const QString marker = m_home.filePath(u"started"_qs);
    writeEntry(u"quill-test-netease.desktop"_qs,
               u"Exec=/bin/sh -c \"echo started > '%1'\" %U"_qs.arg(marker));
    DesktopEntryLauncher launcher({u"quill-missing.desktop"_qs, u"quill-test-netease.desktop"_qs});
    EXPECT_EQ(launcher.launchInBackground(), NetEaseLauncher::Result::launched);
    EXPECT_TRUE(waitUntil([&] { return QFile::exists(marker); }));
}

TEST_F(DesktopEntryLaunch, NothingInstalled) {
    DesktopEntryLauncher launcher({u"quill-missing.desktop"_qs});
    EXPECT_EQ(launcher.launchInBackground(), NetEaseLauncher::Result::notInstalled);
}

TEST_F(DesktopEntryLaunch, ProgramThatCannotStart) {
    writeEntry(u"quill-broken.desktop"_qs, u"Exec=/nonexistent/quill-netease %U"_qs);
    DesktopEntryLauncher launcher({u"quill-broken.desktop"_qs});
    EXPECT_EQ(launcher.launchInBackground(), NetEaseLauncher::Result::failed);
}

TEST(DesktopEntryNames, KnownClientsAreListed) {
    EXPECT_TRUE(
        DesktopEntryLauncher::knownEntryNames().contains(u"netease-cloud-music.desktop"_qs));
}
