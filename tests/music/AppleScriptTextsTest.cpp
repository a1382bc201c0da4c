#include "audio/music/AppleScripts.h"
#include "audio/music/InterpreterOutcome.h"

#include <QStringList>
#include <gtest/gtest.h>

using namespace quill;

namespace {

// The Music program as the interpreter must receive it, one entry per line.
QString expectedMusicScript(const QString& sourceClause) {
    return QStringList{
        u"tell application \"Music\""_qs,
        u"    activate"_qs,
        u"    set sourcePlaylist to "_qs + sourceClause,
        u"    set candidateTracks to every track of sourcePlaylist whose enabled is true"_qs,
        u"    set trackCount to count of candidateTracks"_qs,
        u"    if trackCount is 0 then error \"这个范围里没有可播放的歌曲\""_qs,
        u"    set chosenTrack to item (random number from 1 to trackCount) of candidateTracks"_qs,
        u"    play chosenTrack"_qs,
        u"    return (name of chosenTrack) & \" — \" & (artist of chosenTrack)"_qs,
        u"end tell"_qs,
    }
        .join(u'\n');
}
} // namespace

TEST(AppleMusicScript, LibraryIgnoresThePlaylistNameAndAPlaylistNameIsQuotedUntrimmed) {
    const QString expected = expectedMusicScript(u"library playlist 1"_qs);
    EXPECT_EQ(applescript::appleMusicScript(MusicSource::library, u""_qs), expected);
    EXPECT_EQ(applescript::appleMusicScript(MusicSource::library, u"Road \"trip\""_qs), expected);
    EXPECT_EQ(applescript::appleMusicScript(MusicSource::playlist, u" 晨间 "_qs),
              expectedMusicScript(u"first user playlist whose name is \" 晨间 \""_qs));
}

TEST(AppleMusicScript, HostileNamesStayInsideOneStringLiteral) {
    // Backslashes are doubled before quotes are escaped, or an escaped quote would end it.
    const QStringList names{u"end tell\"\ndo shell script \"rm -rf ~"_qs,
                            u"a\"b\\c"_qs,
                            u"\\\""_qs,
                            u"\\\\"_qs,
                            u"line\nfeed"_qs,
                            u"\\"_qs,
                            u"\""_qs,
                            u"🎧"_qs,
                            QString(1000, u'x')};
    for (const QString& name : names) {
        const QString script = applescript::appleMusicScript(MusicSource::playlist, name);
        // Unescaping the literal gives the name back, and the text after it is untouched.
        const QString prefix = u"first user playlist whose name is \""_qs;
        const qsizetype start = script.indexOf(prefix) + prefix.size();
        QString decoded;
        qsizetype i = start;
        for (; i < script.size() && script.at(i) != u'"'; ++i) {
            if (script.at(i) == u'\\')
                ++i;
            decoded += script.at(i);
        }
        EXPECT_EQ(decoded, name);
        EXPECT_TRUE(script.mid(i + 1).startsWith(
            u"\n    set candidateTracks to every track of sourcePlaylist"_qs))
            << name.toStdString();
    }
}

TEST(NetEaseScript, HasTheExactShapeAndAPlainDecimalTimeout) {
    for (int seconds : {25, 0, 100})
        EXPECT_EQ(applescript::netEaseScript(seconds).section(u'\n', 2, 2),
                  u"set deadline to (current date) + "_qs + QString::number(seconds));
    const QString script = applescript::netEaseScript(6);
    const QStringList lines = script.split(u'\n');
    EXPECT_EQ(lines.size(), 37);
    EXPECT_FALSE(script.endsWith(u'\n'));
    EXPECT_EQ(lines.first(), u"set playNames to {\"播放\", \"Play\"}"_qs);
    EXPECT_EQ(lines.last(), u"end tell"_qs);
    EXPECT_EQ(lines.at(2), u"set deadline to (current date) + 6"_qs);
    EXPECT_EQ(lines.at(8), u"            set netEase to first application process whose bundle "
                           u"identifier is \"com.netease.163music\""_qs);
    EXPECT_EQ(lines.at(21), u"            -- 冷启动时队列可能还没加载完，第一次点击会被忽略；"
                            u"间隔几秒再补点，避免把刚开始的播放又点成暂停。"_qs);
    EXPECT_EQ(
        lines.at(27),
        u"            if errNum is -1743 or errNum is -25211 then error errMsg number errNum"_qs);
    EXPECT_EQ(
        lines.at(32),
        u"            error \"已发送播放指令，但网易云音乐没有开始播放（播放队列可能为空）\""_qs);
    for (const QString& line : lines) {
        const qsizetype indent = line.size() - QStringView(line).trimmed().size();
        EXPECT_EQ(indent % 4, 0) << line.toStdString();
        EXPECT_FALSE(line.contains(u'\t'));
        EXPECT_FALSE(line.endsWith(u' '));
    }
}

// ---- what the interpreter leaves behind ----

namespace {

ProcessResult exited(int code, QByteArray out, QByteArray err) {
    ProcessResult r;
    r.started = true;
    r.normalExit = true;
    r.exitCode = code;
    r.standardOutput = std::move(out);
    r.standardError = std::move(err);
    return r;
}

ProcessResult killed(QByteArray out, QByteArray err) {
    ProcessResult r = exited(0, std::move(out), std::move(err));
    r.normalExit = false;
    return r;
}

ProcessResult notStarted(const QString& why) {
    ProcessResult r;
    r.startError = why;
    return r;
}

struct OutcomeCase {
    const char* name;
    ProcessResult result;
    bool success;
    QString text;
};

class InterpreterOutcomeTest : public ::testing::TestWithParam<OutcomeCase> {};

} // namespace

TEST_P(InterpreterOutcomeTest, MapsToTheShownText) {
    const MusicOutcome outcome = outcomeFromInterpreter(GetParam().result);
    EXPECT_EQ(outcome.success, GetParam().success);
    EXPECT_EQ(outcome.text, GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Rules, InterpreterOutcomeTest,
    ::testing::Values(
        OutcomeCase{"TrimmedOutput", exited(0, "  Song — Artist\n", ""), true, u"Song — Artist"_qs},
        OutcomeCase{"EmptyOutput", exited(0, "", ""), true, u"已开始随机播放"_qs},
        OutcomeCase{"BlankOutput", exited(0, " \n\t\r\n", ""), true, u"已开始随机播放"_qs},
        OutcomeCase{"UndecodableOutput", exited(0, "\xff\xfe\x80", ""), true, u"已开始随机播放"_qs},
        OutcomeCase{"TruncatedUtf8Output", exited(0, "Song \xe6\x99", ""), true,
                    u"已开始随机播放"_qs},
        OutcomeCase{"StderrIgnoredOnSuccess", exited(0, "晴天 — 周杰伦", "warning"), true,
                    u"晴天 — 周杰伦"_qs},
        OutcomeCase{"ScriptLocationAndNumber",
                    exited(1, "",
                           "/tmp/x.scpt:120:170: execution error: "
                           "这个范围里没有可播放的歌曲 (-2700)\n"),
                    false, u"这个范围里没有可播放的歌曲"_qs},
        OutcomeCase{"FileColonBoom", exited(1, "", "a.scpt: execution error: boom (-1)"), false,
                    u"boom"_qs},
        OutcomeCase{"MarkerThenBoom", exited(1, "", "execution error: boom"), false, u"boom"_qs},
        OutcomeCase{"OnlyFirstMarkerCounts",
                    exited(1, "", "x: execution error: a execution error: b (-5)"), false,
                    u"a execution error: b"_qs},
        OutcomeCase{"NoMarkerKeepsTextMinusNumber",
                    exited(1, "", "  Can’t get playlist. (-1728)  \n"), false,
                    u"Can’t get playlist."_qs},
        OutcomeCase{"NumberWithoutBlankStays", exited(1, "", "boom(-1)"), false, u"boom(-1)"_qs},
        OutcomeCase{"NumberNotAtEndStays", exited(1, "", "boom (-1) later"), false,
                    u"boom (-1) later"_qs},
        OutcomeCase{"PositiveNumber", exited(1, "", "boom (42)"), false, u"boom"_qs},
        OutcomeCase{"OnlyTheLastNumberGoes", exited(1, "", "boom (1) (2)"), false, u"boom (1)"_qs},
        OutcomeCase{"EmptyNumberStays", exited(1, "", "boom ()"), false, u"boom ()"_qs},
        OutcomeCase{"NothingOnStderr", exited(1, "Song — Artist", ""), false, u""_qs},
        OutcomeCase{"OnlyTheNumber", exited(1, "", "execution error:  (-1)"), false, u""_qs},
        OutcomeCase{"UndecodableStderr", exited(1, "", "\xc3\x28 execution error"), false,
                    u"无法控制“音乐”App"_qs},
        OutcomeCase{"AnyNonZeroStatus", exited(255, "", "refused (-1743)"), false, u"refused"_qs},
        OutcomeCase{"KilledUsesItsStandardError",
                    killed("Song — Artist", "x: execution error: interrupted (-128)"), false,
                    u"interrupted"_qs},
        OutcomeCase{"StartFailureCarriesTheSystemText",
                    notStarted(u"execvp: No such file or directory"_qs), false,
                    u"execvp: No such file or directory"_qs}),
    [](const ::testing::TestParamInfo<OutcomeCase>& info) { return info.param.name; });
