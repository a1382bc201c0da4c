#include "ui/shell/SingleInstance.h"

#include <QFile>
#include <QLocalServer>
#include <QLocalSocket>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QUuid>
#include <cstring>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace quill;

namespace {

QString uniqueKey() {
    return QStringLiteral("quillmere-test-") + QUuid::createUuid().toString(QUuid::WithoutBraces);
}

TEST(SingleInstanceTest, ALaterLaunchAsksTheFirstToComeForwardHandingOverItsToken) {
    const QString key = uniqueKey();
    SingleInstance first(key);
    ASSERT_TRUE(first.claim());
    QSignalSpy activated(&first, &SingleInstance::activationRequested);
    // A Wayland launcher's token is good for one activation, so it leaves this process's
    // environment with the request; so does an X11 launch's startup id. Without either (a
    // terminal) the request still comes.
    for (const auto& [variable, token] :
         {std::pair{"XDG_ACTIVATION_TOKEN", "kwin-7f3a_9"},
          {"DESKTOP_STARTUP_ID", "kded5-1234-host-kioexec_TIME5678"},
          {"", ""}}) {
        if (*variable)
            qputenv(variable, token);
        SingleInstance later(key);
        EXPECT_FALSE(later.claim());
        ASSERT_TRUE(activated.wait(5000)) << variable; // through the socket: no fixed wait
        EXPECT_EQ(activated.last().value(0).toString(), QString::fromLatin1(token));
        EXPECT_FALSE(qEnvironmentVariableIsSet(variable)) << variable;
    }
    EXPECT_EQ(activated.count(), 3);
}

TEST(SingleInstanceTest, AMalformedRequestOrTokenIsNotPassedOn) {
    EXPECT_EQ(SingleInstance::parseRequest("activate\n"), QString());
    EXPECT_EQ(SingleInstance::parseRequest("activate tok.en-1\n"), QStringLiteral("tok.en-1"));
    EXPECT_EQ(SingleInstance::parseRequest("activate a b\n"), QString()) << "raised, no token";
    EXPECT_EQ(SingleInstance::parseRequest("activate " + QByteArray(600, 'x')), QString());
    EXPECT_EQ(SingleInstance::parseRequest("quit\n"), std::nullopt);
    EXPECT_EQ(SingleInstance::parseRequest("activated\n"), std::nullopt);

    qputenv("XDG_ACTIVATION_TOKEN", "bad\x01token");
    EXPECT_TRUE(SingleInstance::takeLaunchToken().isEmpty());
    EXPECT_FALSE(qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN"));
}

TEST(SingleInstanceTest, ASocketLeftByACrashedInstanceIsTakenOver) {
    const QString key = uniqueKey();
    SingleInstance probe(key);
    // Leave a socket file nobody listens on, as a killed instance would.
    {
        QLocalServer stale;
        stale.setSocketOptions(QLocalServer::UserAccessOption);
        ASSERT_TRUE(stale.listen(probe.serverName()));
        stale.close();
    }
    SingleInstance fresh(key);
    EXPECT_TRUE(fresh.claim());
    SingleInstance later(key);
    EXPECT_FALSE(later.claim());
}

TEST(SingleInstanceTest, DifferentKeysOrSessionsDoNotMeet) {
    SingleInstance a(uniqueKey());
    SingleInstance b(uniqueKey());
    EXPECT_TRUE(a.claim());
    EXPECT_TRUE(b.claim());
    EXPECT_NE(a.serverName(), b.serverName());

    // Two sessions of one user (two runtime folders) each keep their own instance.
    const QByteArray saved = qgetenv("XDG_RUNTIME_DIR");
    QTemporaryDir first, second;
    const QString key = uniqueKey();
    qputenv("XDG_RUNTIME_DIR", first.path().toLocal8Bit());
    SingleInstance inFirst(key);
    qputenv("XDG_RUNTIME_DIR", second.path().toLocal8Bit());
    SingleInstance inSecond(key);
    qputenv("XDG_RUNTIME_DIR", saved);
    EXPECT_TRUE(inFirst.serverName().startsWith(first.path()));
    EXPECT_TRUE(inFirst.claim());
    EXPECT_TRUE(inSecond.claim());
}

/// Sets an environment variable for the scope.
class ScopedEnv {
public:
    ScopedEnv(const char* name, const QByteArray& value)
        : m_name(name), m_saved(qgetenv(name)), m_was(qEnvironmentVariableIsSet(name)) {
        if (value.isNull())
            qunsetenv(name);
        else
            qputenv(name, value);
    }
    ~ScopedEnv() {
        if (m_was)
            qputenv(m_name, m_saved);
        else
            qunsetenv(m_name);
    }

private:
    const char* m_name;
    QByteArray m_saved;
    bool m_was;
};

TEST(SingleInstanceTest, WithoutARuntimeFolderTheSocketLivesInAPrivateFolderOfTheUsers) {
    QTemporaryDir cache;
    ScopedEnv runtime("XDG_RUNTIME_DIR", QByteArray());
    ScopedEnv cacheHome("XDG_CACHE_HOME", QFile::encodeName(cache.path()));
    ASSERT_EQ(::chmod(QFile::encodeName(cache.path()).constData(), 0755), 0);
    SingleInstance first(uniqueKey());
    const QString folder = cache.filePath(QStringLiteral("Quillmere"));
    EXPECT_TRUE(first.serverName().startsWith(folder + '/')) << first.serverName().toStdString();
    struct stat info {};
    ASSERT_EQ(::stat(QFile::encodeName(folder).constData(), &info), 0);
    EXPECT_EQ(info.st_mode & 0777, 0700u);
    EXPECT_TRUE(first.claim());
    SingleInstance second(QFileInfo(first.serverName()).fileName());
    EXPECT_FALSE(second.claim());
}

TEST(SingleInstanceTest, ASocketPlantedByAnotherUserIsNeitherAskedNorTrusted) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "needs root to listen as another user";
    QTemporaryDir shared; // a runtime folder another user can write into
    ASSERT_EQ(::chmod(QFile::encodeName(shared.path()).constData(), 0777), 0);
    ScopedEnv runtime("XDG_RUNTIME_DIR", QFile::encodeName(shared.path()));
    const QString key = uniqueKey();
    const QByteArray path = QFile::encodeName(shared.filePath(key));

    int report[2];
    ASSERT_EQ(::pipe(report), 0);
    const pid_t stranger = ::fork();
    ASSERT_GE(stranger, 0);
    if (stranger == 0) {
        // The other user: listens where the app would, and reports what it was sent.
        if (::setuid(65534) != 0)
            ::_exit(1);
        const int server = ::socket(AF_UNIX, SOCK_STREAM, 0);
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::strncpy(address.sun_path, path.constData(), sizeof address.sun_path - 1);
        if (::bind(server, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0 ||
            ::chmod(path.constData(), 0777) != 0 || ::listen(server, 4) != 0)
            ::_exit(2);
        char ready = 'r';
        (void)!::write(report[1], &ready, 1);
        const int client = ::accept(server, nullptr, nullptr);
        char buffer[64];
        const ssize_t got = client < 0 ? -1 : ::read(client, buffer, sizeof buffer);
        const char received = got > 0 ? 'y' : 'n';
        (void)!::write(report[1], &received, 1);
        ::_exit(0);
    }
    ::close(report[1]);
    char ready = 0;
    ASSERT_EQ(::read(report[0], &ready, 1), 1) << "the stranger could not listen";

    SingleInstance victim(key);
    EXPECT_TRUE(victim.claim()) << "the app runs instead of handing over to a stranger";
    char received = 0;
    ASSERT_EQ(::read(report[0], &received, 1), 1);
    EXPECT_EQ(received, 'n') << "the stranger was sent nothing";
    ::close(report[0]);
    ::waitpid(stranger, nullptr, 0);
}

TEST(SingleInstanceTest, APeerThatSendsMoreThanARequestIsCutOff) {
    SingleInstance app(uniqueKey());
    ASSERT_TRUE(app.claim());
    QSignalSpy activated(&app, &SingleInstance::activationRequested);
    QLocalSocket flood;
    flood.connectToServer(app.serverName());
    ASSERT_TRUE(flood.waitForConnected(5000));
    QSignalSpy closed(&flood, &QLocalSocket::disconnected);
    flood.write(QByteArray(4 * 1024 * 1024, 'x'));
    EXPECT_TRUE(closed.wait(10000)) << "a line that never ends is not buffered";
    EXPECT_EQ(activated.count(), 0);
}

} // namespace
