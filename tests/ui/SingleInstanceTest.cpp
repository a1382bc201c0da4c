#include "ui/shell/SingleInstance.h"

#include <QLocalServer>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QUuid>
#include <gtest/gtest.h>

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

    // A launcher on Wayland hands the new process a token for the compositor; it is good for
    // one activation, so it leaves this process's environment with the request.
    qputenv("XDG_ACTIVATION_TOKEN", "kwin-7f3a_9");
    SingleInstance second(key);
    EXPECT_FALSE(second.claim());
    // The request travels through the local socket: wait for its delivery, not for time.
    ASSERT_TRUE(activated.wait(5000));
    EXPECT_EQ(activated.last().value(0).toString(), QStringLiteral("kwin-7f3a_9"));
    EXPECT_FALSE(qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN"));

    // On X11 the launch's startup id; without one (a terminal) the request still comes.
    qputenv("DESKTOP_STARTUP_ID", "kded5-1234-host-kioexec_TIME5678");
    SingleInstance third(key);
    EXPECT_FALSE(third.claim());
    ASSERT_TRUE(activated.wait(5000));
    EXPECT_EQ(activated.last().value(0).toString(),
              QStringLiteral("kded5-1234-host-kioexec_TIME5678"));
    SingleInstance fourth(key);
    EXPECT_FALSE(fourth.claim());
    ASSERT_TRUE(activated.wait(5000));
    EXPECT_EQ(activated.count(), 3);
    EXPECT_TRUE(activated.last().value(0).toString().isEmpty());
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

} // namespace
