#include "audio/music/AppleScriptMusicBackend.h"

#include "audio/music/AppleScripts.h"
#include "audio/music/InterpreterOutcome.h"
#include "audio/music/MusicLog.h"

#include <QCoreApplication>

namespace quill {

namespace {

struct Preparation {
    bool ok = false;
    bool launched = false;
    QString problem;
};

Preparation prepareNetEase(NetEaseEnvironment& environment) {
    if (!environment.isInstalled())
        return {false, false, QStringLiteral("没有找到网易云音乐客户端")};
    if (!environment.isTrustedForAccessibility())
        return {false, false,
                QStringLiteral("需要在“系统设置 › 隐私与安全性 › "
                               "辅助功能”中允许“Quillmere”；如果已经勾选，请先用“−”"
                               "移除旧条目再重新添加")};
    if (environment.isRunning())
        return {true, false, {}};
    environment.openInBackground();
    return {true, true, {}};
}

} // namespace

AppleScriptMusicBackend::AppleScriptMusicBackend(std::shared_ptr<ProcessLauncher> launcher,
                                                 std::shared_ptr<NetEaseEnvironment> netEase,
                                                 QString interpreter)
    : m_launcher(std::move(launcher)), m_netEase(std::move(netEase)),
      m_interpreter(std::move(interpreter)) {}

void AppleScriptMusicBackend::playRandom(MusicService service, MusicSource source,
                                         const QString& playlistName, Completion completion) {
    QString script;
    if (service == MusicService::netEase) {
        const Preparation preparation = prepareNetEase(*m_netEase);
        if (!preparation.ok) {
            completion({false, preparation.problem});
            return;
        }
        script = applescript::netEaseScript(preparation.launched ? netEaseLaunchedTimeoutSeconds
                                                                 : netEaseRunningTimeoutSeconds);
    } else {
        script = applescript::appleMusicScript(source, playlistName);
    }

    // An argument vector cannot carry U+0000; a name holding one is no playlist Music has.
    if (script.contains(QChar(u'\0'))) {
        QMetaObject::invokeMethod(
            QCoreApplication::instance(),
            [completion] {
                completion({false, QStringLiteral("播放列表名称里有无法使用的字符")});
            },
            Qt::QueuedConnection);
        return;
    }

    qCDebug(lcMusic) << "running" << m_interpreter << "for" << rawValue(service);
    m_launcher->run(m_interpreter, {QStringLiteral("-e"), script},
                    [completion = std::move(completion)](const ProcessResult& result) {
                        completion(outcomeFromInterpreter(result));
                    });
}

} // namespace quill
