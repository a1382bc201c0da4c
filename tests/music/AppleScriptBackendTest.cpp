#include "EventLoopWait.h"
#include "audio/music/AppleScriptMusicBackend.h"
#include "audio/music/AppleScripts.h"
#include "audio/music/MusicController.h"
#include "audio/music/QtProcessLauncher.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace quill;
using quill::test::drainEvents;
using quill::test::waitUntil;

namespace {

// Stands in for /usr/bin/osascript. Every run records its argument count and arguments in
// files of its own, then answers as configured by files beside it: standard output and error,
// exit status, being killed, or holding on until the test releases it.
const char* kFakeInterpreter = R"SH(#!/bin/sh
dir=$(dirname "$0")
call=$(mktemp "$dir/call.XXXXXX")
printf '%s' "$#" > "$call.argc"
printf '%s' "$1" > "$call.arg1"
printf '%s' "$2" > "$call.arg2"
if [ -e "$dir/hold" ]; then
    : > "$call.started"
    while [ ! -e "$dir/release" ]; do sleep 0.01; done
fi
if [ -e "$dir/echo-source" ]; then
    printf '%s\n' "$2" | sed -n 3p
fi
[ -e "$dir/stdout" ] && cat "$dir/stdout"
[ -e "$dir/stderr" ] && cat "$dir/stderr" >&2
[ -e "$dir/kill" ] && kill -9 $$
exit "$(cat "$dir/exit" 2>/dev/null || echo 0)"
)SH";

struct Invocation {
    int argc = 0;
    QString arg1;
    QString arg2;
};

class FakeNetEaseEnvironment final : public NetEaseEnvironment {
public:
    bool isInstalled() override {
        asked << u"installed"_qs;
        return installed;
    }
    bool isTrustedForAccessibility() override {
        asked << u"trusted"_qs;
        return trusted;
    }
    bool isRunning() override {
        asked << u"running"_qs;
        return running;
    }
    void openInBackground() override { ++opened; }

    bool installed = true;
    bool trusted = true;
    bool running = true;
    int opened = 0;
    QStringList asked;
};

class AppleScriptBackendTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(m_dir.isValid());
        QFile script(interpreter());
        ASSERT_TRUE(script.open(QIODevice::WriteOnly));
        script.write(kFakeInterpreter);
        script.close();
        script.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner |
                              QFileDevice::ExeOwner);
        m_backend = std::make_unique<MusicController>(std::make_unique<AppleScriptMusicBackend>(
            std::make_shared<QtProcessLauncher>(), m_netEase, interpreter()));
    }

    QString interpreter() const { return m_dir.filePath(u"osascript"_qs); }

    void answer(const QString& file, const QByteArray& content) {
        QFile f(m_dir.filePath(file));
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(content);
    }

    void request(MusicService service, MusicSource source, const QString& name) {
        m_backend->playRandom(service, source, name,
                              [this](const MusicOutcome& o) { m_outcomes.push_back(o); });
    }

    MusicOutcome runToOutcome(MusicService service, MusicSource source, const QString& name) {
        request(service, source, name);
        EXPECT_TRUE(waitUntil([&] { return !m_outcomes.empty(); }));
        return m_outcomes.empty() ? MusicOutcome{} : m_outcomes.back();
    }

    QList<Invocation> invocations() const {
        QList<Invocation> result;
        QDir dir(m_dir.path());
        for (const QString& f : dir.entryList({u"call.*.argc"_qs}, QDir::Files, QDir::Name)) {
            const QString base = dir.filePath(f.chopped(5));
            auto read = [](const QString& path) {
                QFile file(path);
                return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll())
                                                      : QString();
            };
            result.append({read(base + u".argc"_qs).toInt(), read(base + u".arg1"_qs),
                           read(base + u".arg2"_qs)});
        }
        return result;
    }

    int started() const {
        return QDir(m_dir.path()).entryList({u"call.*.started"_qs}, QDir::Files).size();
    }

    QTemporaryDir m_dir;
    std::shared_ptr<FakeNetEaseEnvironment> m_netEase = std::make_shared<FakeNetEaseEnvironment>();
    std::unique_ptr<MusicPlayer> m_backend;
    std::vector<MusicOutcome> m_outcomes;
};

} // namespace

TEST_F(AppleScriptBackendTest, LibraryRunsTheMusicScriptAsExactlyTwoArguments) {
    answer(u"stdout"_qs, "  Song — Artist\n");
    const MusicOutcome outcome =
        runToOutcome(MusicService::appleMusic, MusicSource::library, u"ignored"_qs);
    EXPECT_TRUE(outcome.success);
    EXPECT_EQ(outcome.text, u"Song — Artist"_qs);

    const auto calls = invocations();
    ASSERT_EQ(calls.size(), 1);
    EXPECT_EQ(calls[0].argc, 2);
    EXPECT_EQ(calls[0].arg1, u"-e"_qs);
    EXPECT_EQ(calls[0].arg2, applescript::appleMusicScript(MusicSource::library, {}));
    EXPECT_TRUE(m_netEase->asked.isEmpty());
}

TEST_F(AppleScriptBackendTest, HostilePlaylistNamesReachTheInterpreterIntact) {
    const QStringList names{u"say \"hi\""_qs,        u"C:\\music\\"_qs,    u"line\nfeed\r\n"_qs,
                            u"🎧 专注 🎶"_qs,          QString(1000, u'長'), u"-e"_qs,
                            u"$(touch pwned) `x`"_qs};
    answer(u"stdout"_qs, "ok");
    for (const QString& name : names) {
        m_outcomes.clear();
        const MusicOutcome outcome =
            runToOutcome(MusicService::appleMusic, MusicSource::playlist, name);
        EXPECT_TRUE(outcome.success) << name.toStdString();
    }
    const auto calls = invocations();
    ASSERT_EQ(calls.size(), names.size());
    QStringList received;
    for (const Invocation& call : calls) {
        EXPECT_EQ(call.argc, 2);
        EXPECT_EQ(call.arg1, u"-e"_qs);
        received << call.arg2;
    }
    for (const QString& name : names)
        EXPECT_TRUE(received.contains(applescript::appleMusicScript(MusicSource::playlist, name)))
            << name.toStdString();
    EXPECT_FALSE(QFile::exists(m_dir.filePath(u"pwned"_qs)));
}

// How the interpreter's output becomes the shown text is its own unit's; these check that
// what a real process leaves behind reaches it, and the fallback when it leaves nothing.
TEST_F(AppleScriptBackendTest, OutputShapes) {
    struct Case {
        QByteArray out, err, exit;
        bool killed;
        bool success;
        QString text;
    };
    const QList<Case> cases{
        {"", "", "0", false, true, u"已开始随机播放"_qs},
        {"", "/x.scpt: execution error: 这个范围里没有可播放的歌曲 (-2700)\n", "1", false, false,
         u"这个范围里没有可播放的歌曲"_qs},
        {"", "", "1", false, false, u"无法控制音乐 App"_qs},
        {"", "x: execution error:  (-1)", "2", false, false, u"无法控制音乐 App"_qs},
        {"Song — Artist", "x: execution error: 用户已取消。 (-128)", "0", true, false,
         u"用户已取消。"_qs},
    };
    for (const Case& c : cases) {
        answer(u"stdout"_qs, c.out);
        answer(u"stderr"_qs, c.err);
        answer(u"exit"_qs, c.exit);
        if (c.killed)
            answer(u"kill"_qs, "");
        m_outcomes.clear();
        const MusicOutcome outcome =
            runToOutcome(MusicService::appleMusic, MusicSource::library, {});
        EXPECT_EQ(outcome.success, c.success) << c.err.constData();
        EXPECT_EQ(outcome.text, c.text) << c.err.constData();
    }
}

// A name with a NUL runs nothing; a missing interpreter fails with the system's text. Both
// answer after playRandom has returned.
TEST_F(AppleScriptBackendTest, UnrunnableRequestsFailLater) {
    for (const bool missing : {false, true}) {
        if (missing)
            m_backend = std::make_unique<MusicController>(std::make_unique<AppleScriptMusicBackend>(
                std::make_shared<QtProcessLauncher>(), m_netEase,
                m_dir.filePath(u"no-such-osascript"_qs)));
        m_outcomes.clear();
        request(MusicService::appleMusic, MusicSource::playlist,
                missing ? u"ab"_qs : u"a"_qs + QChar(u'\0') + u"b"_qs);
        EXPECT_TRUE(m_outcomes.empty()) << "answered before returning";
        ASSERT_TRUE(waitUntil([&] { return !m_outcomes.empty(); }));
        EXPECT_FALSE(m_outcomes[0].success);
        EXPECT_FALSE(m_outcomes[0].text.isEmpty());
        EXPECT_TRUE(invocations().isEmpty());
    }
}

TEST_F(AppleScriptBackendTest, SlowRequestsCloseTogetherNeverHoldTheUiThreadAndCompleteOnce) {
    answer(u"hold"_qs, "");
    answer(u"echo-source"_qs, "");
    std::vector<MusicOutcome> first, second;
    m_backend->playRandom(MusicService::appleMusic, MusicSource::playlist, u"A"_qs,
                          [&](const MusicOutcome& o) { first.push_back(o); });
    m_backend->playRandom(MusicService::appleMusic, MusicSource::playlist, u"B"_qs,
                          [&](const MusicOutcome& o) { second.push_back(o); });
    // Both interpreters run side by side while the loop keeps turning.
    ASSERT_TRUE(waitUntil([&] { return started() == 2; }));
    drainEvents();
    EXPECT_TRUE(first.empty() && second.empty());
    answer(u"release"_qs, "");
    ASSERT_TRUE(waitUntil([&] { return !first.empty() && !second.empty(); }));
    drainEvents();
    ASSERT_EQ(first.size(), 1u);
    ASSERT_EQ(second.size(), 1u);
    EXPECT_EQ(first[0].text, u"set sourcePlaylist to first user playlist whose name is \"A\""_qs);
    EXPECT_EQ(second[0].text, u"set sourcePlaylist to first user playlist whose name is \"B\""_qs);
}

// ---- NetEase preparation ----

// Missing, or without the accessibility permission its script needs: told before returning,
// and the client is neither launched nor scripted.
TEST_F(AppleScriptBackendTest, NetEaseThatCannotBeScriptedFailsBeforeReturning) {
    const QString permission = u"需要在“系统设置 › 隐私与安全性 › 辅助功能”中允许“Quillmere”；"
                               u"如果已经勾选，请先用“−”移除旧条目再重新添加"_qs;
    for (const bool installed : {false, true}) {
        m_netEase->installed = installed;
        m_netEase->trusted = false;
        m_netEase->running = false;
        m_outcomes.clear();
        request(MusicService::netEase, MusicSource::library, {});
        ASSERT_EQ(m_outcomes.size(), 1u);
        EXPECT_FALSE(m_outcomes[0].success);
        EXPECT_EQ(m_outcomes[0].text, installed ? permission : u"没有找到网易云音乐客户端"_qs);
        drainEvents();
        EXPECT_EQ(m_outcomes.size(), 1u);
    }
    EXPECT_EQ(m_netEase->asked, (QStringList{u"installed"_qs, u"installed"_qs, u"trusted"_qs}));
    EXPECT_EQ(m_netEase->opened, 0);
    EXPECT_TRUE(invocations().isEmpty());
}

// Already running it gets six seconds; otherwise it is opened once and gets twenty-five.
TEST_F(AppleScriptBackendTest, NetEaseRunsItsScriptWithTheTimeFitForItsState) {
    answer(u"stdout"_qs, "网易云音乐当前队列\n");
    for (const bool running : {true, false}) {
        m_netEase->running = running;
        m_netEase->asked.clear();
        m_outcomes.clear();
        for (const QString& f : QDir(m_dir.path()).entryList({u"call.*"_qs}, QDir::Files))
            QFile::remove(m_dir.filePath(f));
        const MusicOutcome outcome =
            runToOutcome(MusicService::netEase, MusicSource::playlist, u"x"_qs);
        EXPECT_TRUE(outcome.success);
        EXPECT_EQ(outcome.text, u"网易云音乐当前队列"_qs);
        EXPECT_EQ(m_netEase->opened, running ? 0 : 1);
        EXPECT_EQ(m_netEase->asked, (QStringList{u"installed"_qs, u"trusted"_qs, u"running"_qs}));
        const auto calls = invocations();
        ASSERT_EQ(calls.size(), 1);
        EXPECT_EQ(calls[0].argc, 2);
        EXPECT_EQ(calls[0].arg1, u"-e"_qs);
        EXPECT_EQ(calls[0].arg2, applescript::netEaseScript(running ? 6 : 25));
    }
}
