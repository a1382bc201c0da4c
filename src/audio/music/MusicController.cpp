#include "audio/music/MusicController.h"

#include "audio/music/MusicLog.h"

#include <QCoreApplication>
#include <QThread>
#include <atomic>

namespace quill {

MusicController::MusicController(std::unique_ptr<MusicPlayer> backend)
    : m_backend(std::move(backend)) {}

MusicOutcome MusicController::shown(const MusicOutcome& outcome) {
    if (!outcome.text.isEmpty())
        return outcome;
    return {outcome.success, outcome.success ? QStringLiteral("已开始随机播放")
                                             : QStringLiteral("无法控制音乐 App")};
}

void MusicController::playRandom(MusicService service, MusicSource source,
                                 const QString& playlistName, Completion completion) {
    auto answered = std::make_shared<std::atomic_bool>(false);
    auto deliver = [answered, completion = std::move(completion)](const MusicOutcome& outcome) {
        if (answered->exchange(true)) {
            qCWarning(lcMusic) << "music backend answered a request twice; ignored";
            return;
        }
        const MusicOutcome text = shown(outcome);
        qCDebug(lcMusic) << (text.success ? "music started:" : "music failed:") << text.text;
        auto* app = QCoreApplication::instance();
        if (!app || QThread::currentThread() == app->thread())
            completion(text);
        else
            QMetaObject::invokeMethod(
                app, [completion, text] { completion(text); }, Qt::QueuedConnection);
    };
    m_backend->playRandom(service, source, playlistName, std::move(deliver));
}

} // namespace quill
