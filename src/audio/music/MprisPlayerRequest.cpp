#include "audio/music/MprisPlayerRequest.h"

#include "audio/music/MusicLog.h"

namespace quill {

namespace {
QString player() {
    return QString::fromLatin1(mpris::playerInterface);
}
QString playlists() {
    return QString::fromLatin1(mpris::playlistsInterface);
}
// Players hand out their playlists page by page; one generous page covers any library.
constexpr quint32 kMaxPlaylists = 100000;
} // namespace

MprisPlayerRequest::MprisPlayerRequest(MusicSource source, QString playlistName,
                                       std::shared_ptr<Scheduler> scheduler,
                                       MusicPlayer::Completion completion, QObject* parent,
                                       std::shared_ptr<NetEaseLauncher> launcher)
    : MprisRequest(std::move(scheduler), std::move(completion), parent),
      m_launcher(std::move(launcher)), m_source(source), m_playlistName(std::move(playlistName)),
      m_lastProblem(QStringLiteral("音乐播放器没有响应")) {}

QString MprisPlayerRequest::problemAtDeadline() const {
    if (!isConnected())
        return QStringLiteral("D-Bus 会话总线没有响应");
    if (m_playSent)
        return QStringLiteral("已发送播放指令，但音乐播放器没有开始播放（播放列表可能为空）");
    return m_lastProblem;
}

void MprisPlayerRequest::run() {
    listPlayers([this](std::optional<QList<mpris::PlayerInfo>> players) {
        if (!players) {
            fail(QStringLiteral("无法连接到 D-Bus 会话总线"));
            return;
        }
        if (chooseFrom(*players))
            proceed();
        else if (m_launcher)
            launch();
        else
            fail(QStringLiteral("没有找到正在运行的音乐播放器"));
    });
}

bool MprisPlayerRequest::chooseFrom(const QList<mpris::PlayerInfo>& players) {
    m_candidates = mpris::drivablePlayers(players, MusicService::appleMusic);
    return !m_candidates.isEmpty();
}

void MprisPlayerRequest::proceed() {
    if (m_source == MusicSource::library) {
        m_player = m_candidates.first().busName;
        qCDebug(lcMusic) << "shuffling the library of" << m_player;
        shuffleThen([this] { play(); });
    } else {
        findPlaylist(0, false);
    }
}

void MprisPlayerRequest::launch() {
    launchInBackground(m_launcher, [this](NetEaseLauncher::Result result) { launched(result); });
}

void MprisPlayerRequest::launched(NetEaseLauncher::Result result) {
    switch (result) {
    case NetEaseLauncher::Result::notInstalled:
        fail(QStringLiteral("没有找到正在运行的音乐播放器"));
        return;
    case NetEaseLauncher::Result::failed:
        fail(QStringLiteral("无法启动音乐播放器"));
        return;
    case NetEaseLauncher::Result::launched:
        break;
    }
    m_lastProblem = QStringLiteral("音乐播放器还没有准备好");
    rearmDeadline(launchedDeadline);
    waitForPlayer();
}

// A player that was just started needs a moment before it answers on the bus.
void MprisPlayerRequest::waitForPlayer() {
    listPlayers([this](std::optional<QList<mpris::PlayerInfo>> players) {
        if (players && chooseFrom(*players)) {
            proceed();
            return;
        }
        later(pollInterval, [this] { waitForPlayer(); });
    });
}

// Players are asked one after the other, in order of preference; the first one holding a
// playlist of exactly that name plays it.
void MprisPlayerRequest::findPlaylist(qsizetype candidate, bool anySupportsPlaylists) {
    if (candidate >= m_candidates.size()) {
        fail(anySupportsPlaylists
                 ? QStringLiteral("没有找到播放列表“%1”").arg(mpris::quotedName(m_playlistName))
                 : QStringLiteral("音乐播放器不支持播放列表"));
        return;
    }
    const QString service = m_candidates.at(candidate).busName;
    getAllProperties(
        service, playlists(), [this, candidate, anySupportsPlaylists](const QDBusMessage& reply) {
            const QVariantMap properties =
                reply.type() == QDBusMessage::ReplyMessage && !reply.arguments().isEmpty()
                    ? mpris::toVariantMap(reply.arguments().first())
                    : QVariantMap();
            const QStringList orderings =
                properties.value(QStringLiteral("Orderings")).toStringList();
            if (!properties.contains(QStringLiteral("Orderings"))) {
                findPlaylist(candidate + 1, anySupportsPlaylists);
                return;
            }
            const QString alphabetical = QStringLiteral("Alphabetical");
            searchPlaylists(candidate, orderings.contains(alphabetical) || orderings.isEmpty()
                                           ? alphabetical
                                           : orderings.first());
        });
}

void MprisPlayerRequest::searchPlaylists(qsizetype candidate, const QString& ordering) {
    const QString service = m_candidates.at(candidate).busName;
    callMethod(
        service, playlists(), QStringLiteral("GetPlaylists"),
        {QVariant::fromValue(quint32(0)), QVariant::fromValue(kMaxPlaylists), ordering, false},
        [this, candidate, service](const QDBusMessage& reply) {
            const auto found =
                reply.type() == QDBusMessage::ReplyMessage && !reply.arguments().isEmpty()
                    ? mpris::playlistsFromReply(reply.arguments().first())
                    : std::nullopt;
            if (!found) {
                findPlaylist(candidate + 1, false);
                return;
            }
            for (const mpris::Playlist& playlist : *found) {
                // Exactly that name: no trimming, no case folding, as the user typed it.
                if (playlist.name == m_playlistName) {
                    m_player = service;
                    m_playlist = playlist.id;
                    shuffleThen([this] { activatePlaylist(); });
                    return;
                }
            }
            findPlaylist(candidate + 1, true);
        });
}

// Shuffle makes "play" start a random track; a player without it still plays, so its
// refusal is not an error.
void MprisPlayerRequest::shuffleThen(std::function<void()> next) {
    writeProperty(m_player, player(), QStringLiteral("Shuffle"), true,
                  [next = std::move(next)](const QDBusMessage&) { next(); });
}

void MprisPlayerRequest::activatePlaylist() {
    callMethod(
        m_player, playlists(), QStringLiteral("ActivatePlaylist"),
        {QVariant::fromValue(m_playlist)}, [this](const QDBusMessage& reply) {
            if (reply.type() != QDBusMessage::ReplyMessage) {
                fail(QStringLiteral("无法打开播放列表“%1”").arg(mpris::quotedName(m_playlistName)));
                return;
            }
            play();
        });
}

void MprisPlayerRequest::play() {
    callMethod(m_player, player(), QStringLiteral("Play"), {}, [this](const QDBusMessage& reply) {
        if (reply.type() != QDBusMessage::ReplyMessage) {
            fail(QStringLiteral("音乐播放器拒绝了播放指令"));
            return;
        }
        m_playSent = true;
        checkPlaying();
    });
}

void MprisPlayerRequest::checkPlaying() {
    readPlayerState(m_player, [this](std::optional<mpris::PlayerState> state) {
        if (!state) {
            m_lastProblem = QStringLiteral("音乐播放器没有响应");
        } else if (state->playbackStatus == QLatin1String("Playing")) {
            succeed(mpris::nowPlayingText(state->metadata));
            return;
        } else if (!state->canPlay) {
            // After our play command a player with nothing it could play has an empty range.
            fail(QStringLiteral("这个范围里没有可播放的歌曲"));
            return;
        }
        later(pollInterval, [this] { checkPlaying(); });
    });
}

} // namespace quill
