#include "audio/music/MprisNetEaseRequest.h"

#include "audio/music/MusicLog.h"

namespace quill {

namespace {
const QString kNotReady = QStringLiteral("网易云音乐还没有准备好");
}

MprisNetEaseRequest::MprisNetEaseRequest(std::shared_ptr<NetEaseLauncher> launcher,
                                         std::shared_ptr<Scheduler> scheduler,
                                         MusicPlayer::Completion completion, QObject* parent)
    : MprisRequest(std::move(scheduler), std::move(completion), parent),
      m_launcher(std::move(launcher)), m_lastProblem(kNotReady) {}

QString MprisNetEaseRequest::problemAtDeadline() const {
    if (!isConnected())
        return QStringLiteral("D-Bus 会话总线没有响应");
    if (m_playAccepted)
        return QStringLiteral("已发送播放指令，但网易云音乐没有开始播放（播放队列可能为空）");
    return m_lastProblem;
}

std::optional<QString> MprisNetEaseRequest::netEaseClient(const QList<mpris::PlayerInfo>& players) {
    const QList<mpris::PlayerInfo> clients = mpris::drivablePlayers(players, MusicService::netEase);
    if (clients.isEmpty())
        return std::nullopt;
    return clients.first().busName;
}

void MprisNetEaseRequest::run() {
    listPlayers([this](std::optional<QList<mpris::PlayerInfo>> players) {
        if (!players) {
            fail(QStringLiteral("无法连接到 D-Bus 会话总线"));
            return;
        }
        if (const auto client = netEaseClient(*players)) {
            m_player = *client;
            attempt();
            return;
        }
        launch();
    });
}

void MprisNetEaseRequest::launch() {
    launchInBackground(m_launcher, [this](NetEaseLauncher::Result result) { launched(result); });
}

void MprisNetEaseRequest::launched(NetEaseLauncher::Result result) {
    switch (result) {
    case NetEaseLauncher::Result::notInstalled:
        fail(QStringLiteral("没有找到网易云音乐客户端"));
        return;
    case NetEaseLauncher::Result::failed:
        fail(QStringLiteral("无法启动网易云音乐客户端"));
        return;
    case NetEaseLauncher::Result::launched:
        break;
    }
    // A cold start needs time to appear on the bus and load its queue.
    rearmDeadline(launchedDeadline);
    later(pollInterval, [this] { waitForClient(); });
}

void MprisNetEaseRequest::waitForClient() {
    listPlayers([this](std::optional<QList<mpris::PlayerInfo>> players) {
        if (players) {
            if (const auto client = netEaseClient(*players)) {
                m_player = *client;
                attempt();
                return;
            }
        }
        later(pollInterval, [this] { waitForClient(); });
    });
}

void MprisNetEaseRequest::attempt() {
    readPlayerState(m_player, [this](std::optional<mpris::PlayerState> state) {
        if (!state) {
            m_lastProblem = kNotReady;
        } else if (state->playbackStatus == QLatin1String("Playing")) {
            succeed(m_playAccepted ? QStringLiteral("网易云音乐当前队列")
                                   : QStringLiteral("网易云音乐（原本就在播放）"));
            return;
        } else if (!state->canPlay) {
            m_lastProblem = kNotReady;
        } else if (!m_playCooldown || !m_playCooldown->isActive()) {
            sendPlay();
            return;
        }
        later(pollInterval, [this] { attempt(); });
    });
}

// "Play" never pauses, unlike the client's own toggle; the spacing still gives a client that
// is loading its queue time to act on the first one.
void MprisNetEaseRequest::sendPlay() {
    m_playCooldown = cooldown(playRetryInterval);
    callMethod(m_player, QString::fromLatin1(mpris::playerInterface), QStringLiteral("Play"), {},
               [this](const QDBusMessage& reply) {
                   if (reply.type() == QDBusMessage::ReplyMessage)
                       m_playAccepted = true;
                   else
                       m_lastProblem = kNotReady;
                   later(pollInterval, [this] { attempt(); });
               });
}

} // namespace quill
