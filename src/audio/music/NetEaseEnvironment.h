#pragma once

namespace quill {

/// What the AppleScript backend asks the system about the NetEase client before it runs the
/// menu-driving script. All of it is quick and happens on the UI thread.
class NetEaseEnvironment {
public:
    virtual ~NetEaseEnvironment() = default;
    /// An application with the client's bundle identifier is installed.
    virtual bool isInstalled() = 0;
    /// This process may drive other applications' menus; asks the system to prompt the user
    /// when it may not.
    virtual bool isTrustedForAccessibility() = 0;
    /// The client is running.
    virtual bool isRunning() = 0;
    /// Starts the installed client in the background, without waiting for it.
    virtual void openInBackground() = 0;
};

} // namespace quill
