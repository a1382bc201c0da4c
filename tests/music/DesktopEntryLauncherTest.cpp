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

TEST_F(DesktopEntryLaunch, NothingInstalledOrAProgramThatCannotStart) {
    EXPECT_EQ(DesktopEntryLauncher({u"quill-missing.desktop"_qs}).launchInBackground(),
              NetEaseLauncher::Result::notInstalled);
    writeEntry(u"quill-broken.desktop"_qs, u"Exec=/nonexistent/quill-netease %U"_qs);
    EXPECT_EQ(DesktopEntryLauncher({u"quill-broken.desktop"_qs}).launchInBackground(),
              NetEaseLauncher::Result::failed);
}

TEST_F(DesktopEntryLaunch, TheDesktopsDefaultMusicPlayerComesFirstButNeverABrowserOrVideoPlayer) {
    QTemporaryDir config;
    ASSERT_TRUE(config.isValid());
    const QByteArray oldConfig = qgetenv("XDG_CONFIG_HOME"),
                     oldConfigDirs = qgetenv("XDG_CONFIG_DIRS");
    qputenv("XDG_CONFIG_HOME", config.path().toUtf8());
    qputenv("XDG_CONFIG_DIRS", config.filePath(u"none"_qs).toUtf8());
    QFile list(config.filePath(u"mimeapps.list"_qs));
    ASSERT_TRUE(list.open(QIODevice::WriteOnly));
    list.write("[Added Associations]\naudio/mpeg=elsewhere.desktop;\n"
               "[Default Applications]\naudio/mpeg=vlc.desktop;quill-test-player.desktop;\n"
               "audio/flac=firefox.desktop\n");
    list.close();
    const QStringList names = DesktopEntryLauncher::musicPlayerEntryNames();
    qputenv("XDG_CONFIG_HOME", oldConfig);
    qputenv("XDG_CONFIG_DIRS", oldConfigDirs);

    ASSERT_FALSE(names.isEmpty());
    EXPECT_EQ(names.first(), u"quill-test-player.desktop"_qs);
    EXPECT_FALSE(names.contains(u"vlc.desktop"_qs));
    EXPECT_FALSE(names.contains(u"firefox.desktop"_qs));
    EXPECT_FALSE(names.contains(u"elsewhere.desktop"_qs)) << "only the defaults count";
    EXPECT_TRUE(names.contains(u"org.gnome.Rhythmbox3.desktop"_qs));
}
