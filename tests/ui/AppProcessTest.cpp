// The real app as a process: what the session does to it from outside (its bus wedged, a
// termination signal) ends the way the user would expect.
#include <QDeadlineTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>
#include <csignal>
#include <cstring>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

class AppProcess : public ::testing::Test {
protected:
    /// Starts the app on the offscreen platform in a throwaway home, on `bus`.
    void start(const QByteArray& bus) {
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        for (const char* name : {"HOME", "XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME",
                                 "XDG_STATE_HOME", "XDG_RUNTIME_DIR", "TMPDIR"})
            env.insert(QString::fromLatin1(name), home.path());
        env.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), QString::fromUtf8(bus));
        env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        env.insert(QStringLiteral("SDL_AUDIODRIVER"), QStringLiteral("dummy"));
        env.insert(QStringLiteral("QT_LOGGING_RULES"), QStringLiteral("quillmere.ui.debug=true"));
        app.setProcessEnvironment(env);
        app.setProcessChannelMode(QProcess::MergedChannels);
        app.start(QStringLiteral(QUILL_APP), {});
        ASSERT_TRUE(app.waitForStarted());
    }
    /// Reads the app's log until `line` shows; the cap only bounds a hang (sanitizer builds
    /// start slowly).
    bool logShows(const QString& line) {
        QDeadlineTimer cap(60000);
        while (!output.contains(line) && app.state() != QProcess::NotRunning && !cap.hasExpired()) {
            app.waitForReadyRead(200);
            output += QString::fromLocal8Bit(app.readAll());
        }
        return output.contains(line);
    }
    void TearDown() override {
        if (app.state() != QProcess::NotRunning) {
            app.kill();
            app.waitForFinished();
        }
    }

    QTemporaryDir home;
    QProcess app;
    QString output;
};

TEST_F(AppProcess, AWedgedSessionBusDoesNotKeepTheWindowAway) {
    // Takes connections (the kernel completes them) and never says a word.
    const QByteArray path = QFile::encodeName(home.filePath(QStringLiteral("bus")));
    const int wedged = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_un where{};
    where.sun_family = AF_UNIX;
    std::strncpy(where.sun_path, path.constData(), sizeof where.sun_path - 1);
    ASSERT_EQ(::bind(wedged, reinterpret_cast<sockaddr*>(&where), sizeof where), 0);
    ASSERT_EQ(::listen(wedged, 64), 0);
    start("unix:path=" + path);
    EXPECT_TRUE(logShows(QStringLiteral("Main window shown"))) << output.toStdString();
    EXPECT_TRUE(output.contains(QStringLiteral("The session bus does not answer")));
    ::close(wedged);
}

TEST_F(AppProcess, EachTerminationSignalEndsTheAppLikeQuitting) {
    for (int number : {SIGTERM, SIGINT, SIGHUP}) {
        SCOPED_TRACE(number);
        output.clear();
        start("unix:path=/dev/null/no-bus");
        ASSERT_TRUE(logShows(QStringLiteral("Main window shown"))) << output.toStdString();
        ::kill(pid_t(app.processId()), number);
        ASSERT_TRUE(app.waitForFinished(60000));
        EXPECT_EQ(app.exitStatus(), QProcess::NormalExit) << "not killed by the signal";
        EXPECT_EQ(app.exitCode(), 0);
    }
}

} // namespace
