#include "EventLoopWait.h"
#include "FakeMprisPlayer.h"
#include "PrivateBus.h"
#include "SteppingScheduler.h"
#include "audio/music/MprisMusicBackend.h"
#include "audio/music/MprisNetEaseRequest.h"
#include "audio/music/MprisPlayerRequest.h"
#include "audio/music/MusicController.h"
#include "audio/music/MusicServices.h"
#include "ui/viewmodels/MusicPlayerProbe.h"

#include <QDBusConnectionInterface>
#include <QDBusReply>
#include <QDir>
#include <QFile>
#include <QSemaphore>
#include <QTemporaryDir>
#include <QThreadPool>
#include <atomic>
#include <gtest/gtest.h>

using namespace quill;
using namespace quill::test;

namespace {

class FakeLauncher final : public NetEaseLauncher {
public:
    Result launchInBackground() override {
        ++launches;
        return result;
    }
    Result result = Result::launched;
    int launches = 0;
};

const QStringList kCommands{
    u"Play"_qs, u"Pause"_qs,    u"PlayPause"_qs,        u"Stop"_qs,
    u"Next"_qs, u"Previous"_qs, u"Set Shuffle true"_qs, u"Set Shuffle false"_qs};

class MprisBackendTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(m_bus.isRunning()) << m_bus.error().toStdString();
        static std::atomic_int serial{0};
        m_clientName = u"quill-music-client-%1"_qs.arg(++serial);
        const QString address = m_bus.address();
        const QString name = m_clientName;
        useConnector([address, name] { return QDBusConnection::connectToBus(address, name); });
    }

    void TearDown() override {
        m_backend.reset();
        m_players.clear();
        QThreadPool::globalInstance()->waitForDone();
        drainEvents();
        QDBusConnection::disconnectFromBus(m_clientName);
    }

    void useConnector(MprisMusicBackend::BusConnector connector) {
        m_backend = std::make_unique<MusicController>(std::make_unique<MprisMusicBackend>(
            std::move(connector), m_scheduler, m_launcher, m_musicLauncher));
    }

    FakeMprisPlayer& addPlayer(const QString& suffix, bool playlists = false,
                               const QString& identity = {}, bool publish = true) {
        m_players.push_back(std::make_unique<FakeMprisPlayer>(
            m_bus.address(), FakeMprisPlayer::Options{suffix, identity, {}, playlists}));
        if (publish) {
            EXPECT_TRUE(m_players.back()->publish());
        }
        return *m_players.back();
    }

    void request(MusicService service, MusicSource source = MusicSource::library,
                 const QString& playlist = {}) {
        m_backend->playRandom(service, source, playlist,
                              [this](const MusicOutcome& o) { m_outcomes.push_back(o); });
    }

    /// Lets bus replies arrive and moves virtual time one poll at a time until an answer.
    bool runUntilAnswered(int maxPolls = 400) {
        for (int i = 0; i < maxPolls; ++i) {
            if (!waitUntil([&] { return !m_outcomes.empty() || m_steps->pendingPolls() > 0; }))
                return false;
            if (!m_outcomes.empty())
                return true;
            m_steps->advance(m_steps->pollDelayMs());
        }
        return !m_outcomes.empty();
    }

    MusicOutcome answer(MusicService service, MusicSource source = MusicSource::library,
                        const QString& playlist = {}) {
        request(service, source, playlist);
        EXPECT_TRUE(runUntilAnswered());
        return m_outcomes.empty() ? MusicOutcome{} : m_outcomes.front();
    }

    /// Moves virtual time on by `polls` polls, as a client started a while ago turns up late.
    void pollFor(int polls) {
        for (int i = 0; i < polls; ++i) {
            ASSERT_TRUE(waitUntil([&] { return m_steps->pendingPolls() > 0; }));
            m_steps->advance(m_steps->pollDelayMs());
        }
    }

    qint64 elapsedMs() const { return m_start.msecsTo(m_clock->now()); }

    /// No further answer turns up, whatever time passes.
    void expectNoSecondAnswer() {
        const size_t answers = m_outcomes.size();
        drainEvents();
        m_virtual->advance(60000);
        drainEvents();
        EXPECT_EQ(m_outcomes.size(), answers);
    }

    static QStringList commandsOf(const FakeMprisPlayer& p) {
        QStringList out;
        for (const QString& c : p.calls)
            if (kCommands.contains(c) || c.startsWith(u"ActivatePlaylist"_qs))
                out << c;
        return out;
    }

    PrivateBus m_bus;
    QString m_clientName;
    std::shared_ptr<ManualClock> m_clock = std::make_shared<ManualClock>();
    QDateTime m_start = m_clock->now();
    std::shared_ptr<VirtualScheduler> m_virtual = std::make_shared<VirtualScheduler>(m_clock);
    std::shared_ptr<SteppingScheduler> m_steps =
        std::make_shared<SteppingScheduler>(m_virtual, MprisRequest::pollInterval);
    std::shared_ptr<Scheduler> m_scheduler = m_steps;
    std::shared_ptr<FakeLauncher> m_launcher = std::make_shared<FakeLauncher>();
    std::shared_ptr<FakeLauncher> m_musicLauncher = [] {
        auto l = std::make_shared<FakeLauncher>();
        l->result = NetEaseLauncher::Result::notInstalled; // no music player unless a test adds one
        return l;
    }();
    std::unique_ptr<MusicPlayer> m_backend;
    std::vector<std::unique_ptr<FakeMprisPlayer>> m_players;
    std::vector<MusicOutcome> m_outcomes;
};

} // namespace

// ---- the desktop's music player ----

TEST_F(MprisBackendTest, LibraryDrivesTheMusicPlayerOnlyAndReportsTitleAndArtist) {
    auto& browser = addPlayer(u"firefox.instance_1_7"_qs);
    auto& netEase = addPlayer(u"netease-cloud-music"_qs, false, u"网易云音乐"_qs);
    auto& player = addPlayer(u"strawberry"_qs);
    player.metadata = {{u"xesam:title"_qs, u"晴天"_qs},
                       {u"xesam:artist"_qs, QStringList{u"周杰伦"_qs}}};
    const MusicOutcome outcome =
        answer(MusicService::appleMusic, MusicSource::library, u"ignored"_qs);
    EXPECT_TRUE(outcome.success);
    EXPECT_EQ(outcome.text, u"晴天 — 周杰伦"_qs);
    EXPECT_EQ(commandsOf(player), (QStringList{u"Set Shuffle true"_qs, u"Play"_qs}));
    EXPECT_TRUE(player.shuffle);
    EXPECT_TRUE(commandsOf(browser).isEmpty());
    EXPECT_TRUE(commandsOf(netEase).isEmpty());
    expectNoSecondAnswer();
}

TEST_F(MprisBackendTest, PlayerThatNeverStartsRunsIntoTheDeadline) {
    auto& player = addPlayer(u"rhythmbox"_qs);
    player.playStartsPlayback = false;
    const MusicOutcome outcome = answer(MusicService::appleMusic);
    EXPECT_FALSE(outcome.success);
    EXPECT_EQ(outcome.text, u"已发送播放指令，但音乐播放器没有开始播放（播放列表可能为空）"_qs);
    EXPECT_EQ(elapsedMs(), MprisPlayerRequest::deadline.count());
    EXPECT_EQ(player.count(u"Play"_qs), 1);
    expectNoSecondAnswer();
}

TEST_F(MprisBackendTest, HungPlayerNeverHangsTheApp) {
    auto& player = addPlayer(u"rhythmbox"_qs);
    player.playNeverAnswers = true;
    request(MusicService::appleMusic);
    ASSERT_TRUE(waitUntil([&] { return player.count(u"Play"_qs) == 1; }));
    drainEvents();
    EXPECT_TRUE(m_outcomes.empty());
    m_virtual->advance(MprisPlayerRequest::deadline.count());
    ASSERT_EQ(m_outcomes.size(), 1u);
    EXPECT_FALSE(m_outcomes[0].success);
    EXPECT_EQ(m_outcomes[0].text, u"音乐播放器没有响应"_qs);
    expectNoSecondAnswer();
}

TEST_F(MprisBackendTest, NeitherNetEaseNorBrowsersNorVideoPlayersAreTheDesktopsMusicPlayer) {
    auto& netEase = addPlayer(u"netease-cloud-music"_qs);
    auto& browser = addPlayer(u"chromium.instance4242"_qs);
    auto& video = addPlayer(u"vlc"_qs);
    const MusicOutcome outcome = answer(MusicService::appleMusic);
    EXPECT_EQ(outcome.text, u"没有找到正在运行的音乐播放器"_qs);
    EXPECT_EQ(m_musicLauncher->launches, 1) << "it looked for one to start";
    for (const auto* p : {&netEase, &browser, &video})
        EXPECT_TRUE(commandsOf(*p).isEmpty());
}

TEST_F(MprisBackendTest, TheSettingsCardNamesOnlyThePlayerTheRequestWouldDrive) {
    const QString address = m_bus.address(), client = m_clientName;
    const auto probe = createMusicPlayerProbe(
        [address, client] { return QDBusConnection::connectToBus(address, client); }, m_scheduler);
    auto named = [&](MusicService service) {
        std::optional<QString> found;
        probe->find(service, [&](const QString& player) { found = player; });
        EXPECT_TRUE(waitUntil([&] { return found.has_value(); }));
        return found.value_or(u"(no answer)"_qs);
    };
    addPlayer(u"firefox.instance_1_2"_qs, false, u"Firefox"_qs).playbackStatus = u"Playing"_qs;
    EXPECT_EQ(named(MusicService::appleMusic), QString()) << "a browser is never driven";
    EXPECT_EQ(named(MusicService::netEase), QString());
    addPlayer(u"rhythmbox"_qs, false, u"Rhythmbox"_qs);
    addPlayer(u"netease-cloud-music"_qs);
    EXPECT_EQ(named(MusicService::appleMusic), u"Rhythmbox"_qs);
    EXPECT_EQ(named(MusicService::netEase), u"netease-cloud-music"_qs);
}

TEST_F(MprisBackendTest, NoMusicPlayerRunningStartsTheDesktopsOneAndPlaysOnItOnceItIsOnTheBus) {
    m_musicLauncher->result = NetEaseLauncher::Result::launched;
    auto& browser = addPlayer(u"firefox.instance_1_9"_qs);
    request(MusicService::appleMusic);
    ASSERT_TRUE(waitUntil([&] { return m_musicLauncher->launches == 1; }));
    pollFor(60); // later than a running player's deadline
    auto& music = addPlayer(u"rhythmbox"_qs);
    music.metadata = {{u"xesam:title"_qs, u"晴天"_qs},
                      {u"xesam:artist"_qs, QStringList{u"周杰伦"_qs}}};
    ASSERT_TRUE(runUntilAnswered());
    EXPECT_EQ(m_outcomes[0].text, u"晴天 — 周杰伦"_qs);
    EXPECT_EQ(commandsOf(music), (QStringList{u"Set Shuffle true"_qs, u"Play"_qs}));
    EXPECT_TRUE(commandsOf(browser).isEmpty());
    EXPECT_EQ(m_musicLauncher->launches, 1);
    expectNoSecondAnswer();
}

// ---- playlists ----

TEST_F(MprisBackendTest, PlaylistIsFoundByExactNameAcrossPlayersAndPlayed) {
    auto& other = addPlayer(u"elisa"_qs, true);
    other.playlists = {{u"Other"_qs, {u"a"_qs}}};
    auto& player = addPlayer(u"rhythmbox"_qs, true);
    player.playlists = {{u"晨间 "_qs, {u"wrong"_qs}},
                        {u"晨间"_qs, {u"Morning Song"_qs}},
                        {u"晨间曲"_qs, {u"wrong too"_qs}}};
    const MusicOutcome outcome =
        answer(MusicService::appleMusic, MusicSource::playlist, u"晨间"_qs);
    EXPECT_TRUE(outcome.success);
    EXPECT_EQ(outcome.text, u"Morning Song — 歌手"_qs);
    EXPECT_EQ(commandsOf(player),
              (QStringList{u"Set Shuffle true"_qs, u"ActivatePlaylist 晨间"_qs, u"Play"_qs}));
    EXPECT_TRUE(commandsOf(other).isEmpty());
}

TEST_F(MprisBackendTest, HostilePlaylistNamesMatchExactlyAndNeverBreakACall) {
    const QStringList names{u"He said \"hi\""_qs, u"C:\\music\\"_qs,    u"line\nfeed"_qs,
                            u"🎧 专注 🎶"_qs,       QString(1000, u'長'), u"/org/path"_qs};
    auto& player = addPlayer(u"rhythmbox"_qs, true);
    for (const QString& name : names)
        player.playlists.append({name, {u"Track for "_qs + name.left(8)}});
    for (const QString& name : names) {
        m_outcomes.clear();
        const MusicOutcome outcome = answer(MusicService::appleMusic, MusicSource::playlist, name);
        EXPECT_TRUE(outcome.success) << outcome.text.toStdString();
        EXPECT_EQ(player.calls.count(u"ActivatePlaylist "_qs + name), 1);
    }
    m_outcomes.clear();
    const QString missing = u"no\nsuch \"list\" "_qs + QString(1000, u'x');
    const MusicOutcome outcome = answer(MusicService::appleMusic, MusicSource::playlist, missing);
    EXPECT_FALSE(outcome.success);
    EXPECT_FALSE(outcome.text.contains(u'\n'));
    EXPECT_TRUE(outcome.text.startsWith(u"没有找到播放列表“no such \"list\" x"_qs));
    EXPECT_LT(outcome.text.size(), 100);
}

// ---- NetEase ----

TEST_F(MprisBackendTest, NetEaseAlreadyPlayingIsLeftAlone) {
    auto& client = addPlayer(u"netease-cloud-music"_qs, false, u"网易云音乐"_qs);
    client.playbackStatus = u"Playing"_qs;
    const MusicOutcome outcome = answer(MusicService::netEase);
    EXPECT_TRUE(outcome.success);
    EXPECT_EQ(outcome.text, u"网易云音乐（原本就在播放）"_qs);
    EXPECT_TRUE(commandsOf(client).isEmpty());
    EXPECT_EQ(client.playbackStatus, u"Playing"_qs);
    EXPECT_EQ(m_launcher->launches, 0);
}

TEST_F(MprisBackendTest, NetEaseFoundByIdentityStartsItsQueue) {
    auto& desktop = addPlayer(u"rhythmbox"_qs);
    auto& client = addPlayer(u"chromium.instance77"_qs, false, u"网易云音乐"_qs);
    const MusicOutcome outcome = answer(MusicService::netEase);
    EXPECT_TRUE(outcome.success);
    EXPECT_EQ(outcome.text, u"网易云音乐当前队列"_qs);
    EXPECT_EQ(commandsOf(client), QStringList{u"Play"_qs}) << "no shuffle, no toggle";
    EXPECT_TRUE(commandsOf(desktop).isEmpty());
}

TEST_F(MprisBackendTest, NetEaseRunningButNotStartingGetsSixSecondsAndRetriesEveryThree) {
    auto& client = addPlayer(u"netease-cloud-music"_qs);
    client.playStartsPlayback = false;
    const MusicOutcome outcome = answer(MusicService::netEase);
    EXPECT_FALSE(outcome.success);
    EXPECT_EQ(outcome.text, u"已发送播放指令，但网易云音乐没有开始播放（播放队列可能为空）"_qs);
    EXPECT_EQ(elapsedMs(), MprisNetEaseRequest::runningDeadline.count());
    EXPECT_EQ(client.count(u"Play"_qs), 2) << "at the start and once 3 s later";
    EXPECT_EQ(client.count(u"PlayPause"_qs) + client.count(u"Pause"_qs), 0);
}

TEST_F(MprisBackendTest, NetEaseNotRunningIsLaunchedAndStartsOnceOnTheBus) {
    request(MusicService::netEase);
    ASSERT_TRUE(waitUntil([&] { return m_launcher->launches == 1; }));
    pollFor(40); // well past the 6 s of a running one
    auto& client = addPlayer(u"netease-cloud-music"_qs, false, u"网易云音乐"_qs);
    ASSERT_TRUE(runUntilAnswered());
    EXPECT_TRUE(m_outcomes[0].success) << m_outcomes[0].text.toStdString();
    EXPECT_EQ(m_outcomes[0].text, u"网易云音乐当前队列"_qs);
    EXPECT_EQ(m_launcher->launches, 1);
    EXPECT_EQ(commandsOf(client), QStringList{u"Play"_qs});
    expectNoSecondAnswer();
}

// ---- requests that end in one answer of their own ----

using Launch = NetEaseLauncher::Result;

struct OneAnswer {
    std::string name;
    QString player{};       ///< bus suffix of the one player on the bus; none: an empty bus
    bool playlists = false; ///< it exports "Focus" (one track) and "空" (none)
    bool canPlay = true;
    Launch musicLaunch = Launch::notInstalled;
    Launch netEaseLaunch = Launch::launched;
    MusicService service = MusicService::appleMusic;
    MusicSource source = MusicSource::library;
    QString playlist{};
    bool success = false;
    QString text{};
    qint64 elapsedMs = -1;                 ///< virtual time to the answer; -1: any
    std::optional<QStringList> commands{}; ///< what the player received
};

class MprisOneAnswer : public MprisBackendTest, public ::testing::WithParamInterface<OneAnswer> {};

TEST_P(MprisOneAnswer, AnswersOnceWithItsText) {
    const OneAnswer& c = GetParam();
    m_musicLauncher->result = c.musicLaunch;
    m_launcher->result = c.netEaseLaunch;
    FakeMprisPlayer* player = nullptr;
    if (!c.player.isEmpty()) {
        player = &addPlayer(c.player, c.playlists);
        player->canPlay = c.canPlay;
        player->playlists = {{u"Focus"_qs, {u"x"_qs}}, {u"空"_qs, {}}};
    }
    const MusicOutcome outcome = answer(c.service, c.source, c.playlist);
    EXPECT_EQ(outcome.success, c.success);
    EXPECT_EQ(outcome.text, c.text);
    if (c.elapsedMs >= 0) {
        EXPECT_EQ(elapsedMs(), c.elapsedMs);
    }
    if (player && c.commands) {
        EXPECT_EQ(commandsOf(*player), *c.commands);
    }
    expectNoSecondAnswer();
}

std::vector<OneAnswer> oneAnswers() {
    const auto netEase = MusicService::netEase;
    const auto playlist = MusicSource::playlist;
    const QString rhythmbox = u"rhythmbox"_qs, client = u"netease-cloud-music"_qs;
    const QString noList = u"没有找到播放列表“%1”"_qs;
    std::vector<OneAnswer> cases{
        {.name = "LibraryWithoutMetadataSaysItStarted",
         .player = u"elisa"_qs,
         .success = true,
         .text = u"已开始随机播放"_qs},
        {.name = "EmptyLibraryFailsAtOnce",
         .player = rhythmbox,
         .canPlay = false,
         .text = u"这个范围里没有可播放的歌曲"_qs,
         .elapsedMs = 0},
        {.name = "NoPlayerOnTheBus", .text = u"没有找到正在运行的音乐播放器"_qs},
        {.name = "AStartedPlayerThatNeverAppears",
         .musicLaunch = Launch::launched,
         .text = u"音乐播放器还没有准备好"_qs,
         .elapsedMs = MprisPlayerRequest::launchedDeadline.count()},
        {.name = "APlayerThatCannotStart",
         .musicLaunch = Launch::failed,
         .text = u"无法启动音乐播放器"_qs},
        {.name = "EmptyPlaylist",
         .player = rhythmbox,
         .playlists = true,
         .source = playlist,
         .playlist = u"空"_qs,
         .text = u"这个范围里没有可播放的歌曲"_qs,
         .commands = QStringList{u"Set Shuffle true"_qs, u"ActivatePlaylist 空"_qs, u"Play"_qs}},
        {.name = "PlayerWithoutPlaylists",
         .player = rhythmbox,
         .source = playlist,
         .playlist = u"Focus"_qs,
         .text = u"音乐播放器不支持播放列表"_qs,
         .commands = QStringList{}},
        {.name = "NetEaseWithNothingToPlay",
         .player = client,
         .canPlay = false,
         .service = netEase,
         .text = u"网易云音乐还没有准备好"_qs,
         .elapsedMs = 6000,
         .commands = QStringList{}},
        {.name = "NetEaseLaunchedButNeverAppearing",
         .service = netEase,
         .text = u"网易云音乐还没有准备好"_qs,
         .elapsedMs = MprisNetEaseRequest::launchedDeadline.count()},
        {.name = "NetEaseNotInstalled",
         .netEaseLaunch = Launch::notInstalled,
         .service = netEase,
         .text = u"没有找到网易云音乐客户端"_qs,
         .elapsedMs = 0},
        {.name = "NetEaseLaunchFailure",
         .netEaseLaunch = Launch::failed,
         .service = netEase,
         .text = u"无法启动网易云音乐客户端"_qs},
    };
    // Playlist names are neither trimmed nor case-folded.
    const std::pair<const char*, QString> near[] = {{"Lower", u"focus"_qs},
                                                    {"Leading", u" Focus"_qs},
                                                    {"Trailing", u"Focus "_qs},
                                                    {"Empty", {}}};
    for (const auto& [name, list] : near)
        cases.push_back({.name = std::string("PlaylistName") + name,
                         .player = rhythmbox,
                         .playlists = true,
                         .source = playlist,
                         .playlist = list,
                         .text = noList.arg(list),
                         .commands = QStringList{}});
    return cases;
}

INSTANTIATE_TEST_SUITE_P(Cases, MprisOneAnswer, ::testing::ValuesIn(oneAnswers()),
                         [](const auto& info) { return info.param.name; });

// ---- the bus itself ----

TEST_F(MprisBackendTest, NoBusAtAll) {
    const QString name = m_clientName + u"-nowhere"_qs;
    useConnector([name] {
        return QDBusConnection::connectToBus(u"unix:path=/nonexistent/quill-no-bus"_qs, name);
    });
    const MusicOutcome outcome = answer(MusicService::appleMusic);
    EXPECT_FALSE(outcome.success);
    EXPECT_EQ(outcome.text, u"无法连接到 D-Bus 会话总线"_qs);
    QDBusConnection::disconnectFromBus(name);

    m_outcomes.clear();
    EXPECT_EQ(answer(MusicService::netEase).text, u"无法连接到 D-Bus 会话总线"_qs);
    EXPECT_EQ(m_launcher->launches, 0);
}

TEST_F(MprisBackendTest, BusThatNeverConnectsEndsAtTheDeadlineAndIsThenIgnored) {
    auto gate = std::make_shared<QSemaphore>();
    const QString address = m_bus.address();
    const QString name = m_clientName;
    useConnector([gate, address, name] {
        gate->acquire();
        return QDBusConnection::connectToBus(address, name);
    });
    addPlayer(u"rhythmbox"_qs);
    request(MusicService::appleMusic);
    drainEvents();
    EXPECT_TRUE(m_outcomes.empty());
    m_virtual->advance(MprisPlayerRequest::deadline.count());
    ASSERT_EQ(m_outcomes.size(), 1u);
    EXPECT_EQ(m_outcomes[0].text, u"D-Bus 会话总线没有响应"_qs);

    gate->release();
    QThreadPool::globalInstance()->waitForDone();
    drainEvents();
    EXPECT_EQ(m_outcomes.size(), 1u);
    EXPECT_TRUE(commandsOf(*m_players[0]).isEmpty());
}

TEST_F(MprisBackendTest, TwoRequestsCloseTogetherEachCompleteOnce) {
    auto& player = addPlayer(u"rhythmbox"_qs, true);
    player.playlists = {{u"A"_qs, {u"Song A"_qs}}};
    std::vector<MusicOutcome> first, second;
    m_backend->playRandom(MusicService::appleMusic, MusicSource::playlist, u"A"_qs,
                          [&](const MusicOutcome& o) { first.push_back(o); });
    m_backend->playRandom(MusicService::appleMusic, MusicSource::playlist, u"missing"_qs,
                          [&](const MusicOutcome& o) { second.push_back(o); });
    ASSERT_TRUE(waitUntil([&] { return !first.empty() && !second.empty(); }));
    drainEvents();
    m_virtual->advance(60000);
    drainEvents();
    ASSERT_EQ(first.size(), 1u);
    ASSERT_EQ(second.size(), 1u);
    EXPECT_EQ(first[0].text, u"Song A — 歌手"_qs);
    EXPECT_EQ(second[0].text, u"没有找到播放列表“missing”"_qs);
}

TEST(PrivateBusTest, StartsNothingInstalledOnTheMachine) {
    // A desktop's notification server installed where session buses look for activatable
    // services: a private bus must neither list nor start it.
    QTemporaryDir data;
    const QString services = data.filePath(u"dbus-1/services"_qs);
    ASSERT_TRUE(QDir().mkpath(services));
    QFile file(services + u"/org.freedesktop.Notifications.service"_qs);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[D-BUS Service]\nName=org.freedesktop.Notifications\nExec=/bin/sleep 60\n");
    file.close();
    const QByteArray home = qgetenv("XDG_DATA_HOME"), dirs = qgetenv("XDG_DATA_DIRS");
    qputenv("XDG_DATA_HOME", data.path().toUtf8());
    qputenv("XDG_DATA_DIRS", data.path().toUtf8());
    PrivateBus bus;
    qputenv("XDG_DATA_HOME", home);
    qputenv("XDG_DATA_DIRS", dirs);
    ASSERT_TRUE(bus.isRunning()) << bus.error().toStdString();

    QDBusConnection connection =
        QDBusConnection::connectToBus(bus.address(), u"quill-bus-check"_qs);
    ASSERT_TRUE(connection.isConnected());
    const QDBusReply<QStringList> names = connection.interface()->call(u"ListActivatableNames"_qs);
    ASSERT_TRUE(names.isValid());
    EXPECT_EQ(names.value(), QStringList{u"org.freedesktop.DBus"_qs});
    const QDBusReply<void> started =
        connection.interface()->startService(u"org.freedesktop.Notifications"_qs);
    EXPECT_FALSE(started.isValid()) << "nothing can be started on demand";
    QDBusConnection::disconnectFromBus(u"quill-bus-check"_qs);
}

// ---- the app's own wiring ----

TEST_F(MprisBackendTest, TheAppsPlayerDrivesTheSessionBus) {
    const QByteArray saved = qgetenv("DBUS_SESSION_BUS_ADDRESS");
    qputenv("DBUS_SESSION_BUS_ADDRESS", m_bus.address().toUtf8());
    auto& player = addPlayer(u"rhythmbox"_qs);
    player.metadata = {{u"xesam:title"_qs, u"Real Timers"_qs}};
    const auto app = createMusicPlayer();
    std::vector<MusicOutcome> outcomes;
    app->playRandom(MusicService::appleMusic, MusicSource::library, {},
                    [&](const MusicOutcome& o) { outcomes.push_back(o); });
    EXPECT_TRUE(outcomes.empty());
    ASSERT_TRUE(waitUntil([&] { return !outcomes.empty(); }));
    EXPECT_TRUE(outcomes[0].success);
    EXPECT_EQ(outcomes[0].text, u"Real Timers"_qs);
    EXPECT_EQ(commandsOf(player), (QStringList{u"Set Shuffle true"_qs, u"Play"_qs}));
    qputenv("DBUS_SESSION_BUS_ADDRESS", saved);
}
