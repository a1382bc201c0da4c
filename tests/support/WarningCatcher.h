#pragma once

#include <QStringList>
#include <QtGlobal>
#include <mutex>

namespace quill::test {

/// Collects the warnings logged while it lives.
class WarningCatcher {
public:
    WarningCatcher() {
        s_current = this;
        m_previous = qInstallMessageHandler(&WarningCatcher::handle);
    }
    ~WarningCatcher() {
        qInstallMessageHandler(m_previous);
        s_current = nullptr;
    }
    QStringList warnings;

private:
    static void handle(QtMsgType type, const QMessageLogContext&, const QString& message) {
        // Saves log from the writer's thread.
        static std::mutex mutex;
        std::lock_guard lock(mutex);
        if (s_current && type == QtWarningMsg)
            s_current->warnings << message;
    }
    static inline WarningCatcher* s_current = nullptr;
    QtMessageHandler m_previous = nullptr;
};

} // namespace quill::test
