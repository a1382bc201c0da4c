#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <functional>

namespace quill {

/// What a finished child process left behind.
struct ProcessResult {
    bool started = false;
    QString startError;      ///< the system's reason when it could not be started
    bool normalExit = false; ///< false when it was killed or crashed
    int exitCode = -1;
    QByteArray standardOutput;
    QByteArray standardError;
};

/// Runs a child process without ever blocking the caller's thread.
class ProcessLauncher {
public:
    using Done = std::function<void(const ProcessResult&)>;
    virtual ~ProcessLauncher() = default;
    /// Starts `program` with exactly `arguments`; `done` runs once, later, on the caller's
    /// thread when the process has ended or could not be started.
    virtual void run(const QString& program, const QStringList& arguments, Done done) = 0;
};

} // namespace quill
