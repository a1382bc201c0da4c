#pragma once

#include "audio/music/ProcessLauncher.h"

namespace quill {

/// ProcessLauncher on QProcess: the event loop reports the end, nothing waits for it.
class QtProcessLauncher final : public ProcessLauncher {
public:
    void run(const QString& program, const QStringList& arguments, Done done) override;
};

} // namespace quill
