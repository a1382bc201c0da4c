#include "audio/music/QtProcessLauncher.h"

#include "audio/music/MusicLog.h"

#include <QCoreApplication>
#include <QProcess>
#include <memory>

namespace quill {

void QtProcessLauncher::run(const QString& program, const QStringList& arguments, Done done) {
    // Parented to the application so a child still running at quit is ended with it.
    auto* process = new QProcess(QCoreApplication::instance());
    process->setProgram(program);
    process->setArguments(arguments);
    process->setProcessChannelMode(QProcess::SeparateChannels);
    // The interpreter reads nothing from us; it keeps the app's own standard input.
    process->setInputChannelMode(QProcess::ForwardedInputChannel);

    auto reported = std::make_shared<bool>(false);
    auto report = [process, reported, done = std::move(done)](const ProcessResult& result) {
        if (*reported)
            return;
        *reported = true;
        process->deleteLater();
        // Queued, because a start failure can be reported from inside start() itself and
        // callers are promised the answer later, never before run() returns.
        QMetaObject::invokeMethod(
            QCoreApplication::instance(), [done, result] { done(result); }, Qt::QueuedConnection);
    };

    QObject::connect(process, &QProcess::errorOccurred, process,
                     [process, report](QProcess::ProcessError error) {
                         // Other errors are followed by finished(); only this one ends here.
                         if (error != QProcess::FailedToStart)
                             return;
                         ProcessResult result;
                         result.startError = process->errorString();
                         qCDebug(lcMusic)
                             << "could not start" << process->program() << result.startError;
                         report(result);
                     });
    QObject::connect(process, &QProcess::finished, process,
                     [process, report](int exitCode, QProcess::ExitStatus status) {
                         ProcessResult result;
                         result.started = true;
                         result.normalExit = status == QProcess::NormalExit;
                         result.exitCode = exitCode;
                         result.standardOutput = process->readAllStandardOutput();
                         result.standardError = process->readAllStandardError();
                         report(result);
                     });
    process->start();
}

} // namespace quill
