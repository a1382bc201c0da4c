#include "GracefulExit.h"

#include "store/AppStore.h"
#include "ui/UiLog.h"

#include <QSocketNotifier>
#include <atomic>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

namespace quill {

namespace {
constexpr int kSignals[] = {SIGTERM, SIGINT, SIGHUP};

// Only what a signal handler may touch: the pipe's write end and a plain pointer.
std::atomic<int> g_writeEnd{-1};
std::atomic<AppStore*> g_store{nullptr};

extern "C" void onTerminationSignal(int number) {
    const int saved = errno;
    const unsigned char byte = static_cast<unsigned char>(number);
    if (const int fd = g_writeEnd.load(); fd >= 0)
        (void)!::write(fd, &byte, 1);
    errno = saved;
}

void flushAtExit() {
    if (AppStore* store = g_store.exchange(nullptr))
        store->flushSaves();
}
} // namespace

GracefulExit::GracefulExit(AppStore* store, QObject* parent) : QObject(parent) {
    static const bool registered = std::atexit(flushAtExit) == 0;
    if (!registered)
        qCWarning(lcUi) << "Cannot save at exit";
    g_store.store(store);

    if (::pipe2(m_pipe, O_CLOEXEC | O_NONBLOCK) != 0) {
        qCWarning(lcUi) << "Termination signals are not handled: no pipe";
        return;
    }
    g_writeEnd.store(m_pipe[1]);
    m_notifier = std::make_unique<QSocketNotifier>(m_pipe[0], QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &GracefulExit::onSignal);
    struct sigaction action {};
    action.sa_handler = onTerminationSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    for (int number : kSignals)
        ::sigaction(number, &action, nullptr);
}

GracefulExit::~GracefulExit() {
    g_store.store(nullptr);
    if (m_pipe[0] < 0)
        return;
    struct sigaction action {};
    action.sa_handler = SIG_DFL;
    sigemptyset(&action.sa_mask);
    for (int number : kSignals)
        ::sigaction(number, &action, nullptr);
    g_writeEnd.store(-1);
    m_notifier.reset();
    ::close(m_pipe[0]);
    ::close(m_pipe[1]);
}

void GracefulExit::onSignal() {
    unsigned char byte = 0;
    while (::read(m_pipe[0], &byte, 1) == 1) {
        qCInfo(lcUi) << "Quitting on signal" << int(byte);
        Q_EMIT terminationRequested(int(byte));
    }
}

} // namespace quill
