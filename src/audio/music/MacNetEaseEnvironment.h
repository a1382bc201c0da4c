#pragma once

#include "audio/music/NetEaseEnvironment.h"

namespace quill {

/// The NetEase client as macOS sees it: the workspace finds and opens it, the running
/// applications tell whether it runs, and the accessibility check may prompt the user.
class MacNetEaseEnvironment final : public NetEaseEnvironment {
public:
    bool isInstalled() override;
    bool isTrustedForAccessibility() override;
    bool isRunning() override;
    void openInBackground() override;
};

} // namespace quill
