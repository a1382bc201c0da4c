#pragma once

namespace quill {

/// Starts the NetEase Cloud Music client on a desktop where it is not running yet.
class NetEaseLauncher {
public:
    enum class Result { launched, notInstalled, failed };
    virtual ~NetEaseLauncher() = default;
    /// Starts the client in the background and returns at once; nothing waits for it.
    virtual Result launchInBackground() = 0;
};

} // namespace quill
