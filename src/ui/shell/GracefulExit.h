#pragma once

#include <QObject>
#include <memory>

class QSocketNotifier;

namespace quill {

class AppStore;

/// Ends the app the way quitting from its menu does, without asking, when the session does:
/// SIGTERM, SIGINT and SIGHUP (logout, shutdown, Ctrl+C) become `terminationRequested` on the
/// main thread, and when the window system goes away (Qt then calls exit()), the store still
/// writes a settings change waiting to settle and lets a running save finish.
class GracefulExit : public QObject {
    Q_OBJECT

public:
    /// `store` is flushed at exit() while this object lives; it may be null.
    explicit GracefulExit(AppStore* store, QObject* parent = nullptr);
    ~GracefulExit() override;

Q_SIGNALS:
    void terminationRequested(int signalNumber);

private:
    void onSignal();

    int m_pipe[2] = {-1, -1};
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace quill
