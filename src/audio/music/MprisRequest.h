#pragma once

#include "audio/music/MprisProtocol.h"
#include "audio/music/NetEaseLauncher.h"
#include "store/MusicPlayer.h"
#include "store/Scheduler.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <chrono>
#include <functional>
#include <memory>
#include <vector>

namespace quill {

/// One music request over MPRIS: the asynchronous bus calls, the polls and the deadline of a
/// single playRandom. Everything runs on the UI thread; nothing here waits. The request
/// answers exactly once and then deletes itself.
class MprisRequest : public QObject {
    Q_OBJECT
public:
    static constexpr std::chrono::milliseconds pollInterval{200};
    static constexpr int callTimeoutMs = 5000;

    MprisRequest(std::shared_ptr<Scheduler> scheduler, MusicPlayer::Completion completion,
                 QObject* parent);
    ~MprisRequest() override;

    /// Arms the first deadline; from here on a bus that never answers still ends the request.
    void start(std::chrono::milliseconds deadline);
    /// Continues with the connection attempt's result.
    void begin(const QDBusConnection& bus);

protected:
    using ReplyHandler = std::function<void(const QDBusMessage& reply)>;
    using PlayersHandler = std::function<void(std::optional<QList<mpris::PlayerInfo>> players)>;
    using StateHandler = std::function<void(std::optional<mpris::PlayerState> state)>;

    /// The bus is connected: do the work.
    virtual void run() = 0;
    /// The message for a request that ran out of time.
    virtual QString problemAtDeadline() const = 0;

    bool isConnected() const { return m_connected; }
    bool isFinished() const { return m_finished; }

    /// Replaces the deadline: it now ends `deadline` from this moment.
    void rearmDeadline(std::chrono::milliseconds deadline);
    /// Runs `fn` after `delay` unless the request has answered by then.
    void later(std::chrono::milliseconds delay, std::function<void()> fn);
    /// An inactive-after-`delay` marker, for rate limits.
    std::unique_ptr<Scheduler::Handle> cooldown(std::chrono::milliseconds delay);

    void callMethod(const QString& service, const QString& interface, const QString& method,
                    const QVariantList& arguments, ReplyHandler onReply);
    void getAllProperties(const QString& service, const QString& interface, ReplyHandler onReply);
    void writeProperty(const QString& service, const QString& interface, const QString& name,
                       const QVariant& value, ReplyHandler onReply);
    /// Every MPRIS player on the bus with its identity; nothing when the bus did not answer.
    void listPlayers(PlayersHandler done);
    /// The Player interface's state; nothing when the player did not answer sensibly.
    void readPlayerState(const QString& service, StateHandler done);

    /// Starts `launcher` on a pool thread (reading desktop entries and forking must not block
    /// the UI thread); `done` runs back on this thread, and not at all if the request is gone.
    void launchInBackground(std::shared_ptr<NetEaseLauncher> launcher,
                            std::function<void(NetEaseLauncher::Result)> done);

    void succeed(const QString& text);
    void fail(const QString& message);

private:
    void finish(const MusicOutcome& outcome);

    std::shared_ptr<Scheduler> m_scheduler;
    MusicPlayer::Completion m_completion;
    QDBusConnection m_bus;
    // Handles are kept until the request is gone: a callback may be running inside its own
    // handle, so none is destroyed early; cancelled ones are recognised by generation.
    std::vector<std::unique_ptr<Scheduler::Handle>> m_timers;
    int m_deadlineGeneration = 0;
    bool m_connected = false;
    bool m_finished = false;
};

} // namespace quill
