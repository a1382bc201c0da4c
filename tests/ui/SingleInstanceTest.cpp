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

TEST(SingleInstanceTest, TheFirstLaunchClaimsAndALaterOneAsksItToComeForward) {
    const QString key = uniqueKey();
    SingleInstance first(key);
    ASSERT_TRUE(first.claim());
    QSignalSpy activated(&first, &SingleInstance::activationRequested);

    SingleInstance second(key);
    EXPECT_FALSE(second.claim());
    // The request travels through the local socket: wait for its delivery, not for time.
    ASSERT_TRUE(activated.wait(5000));
    EXPECT_EQ(activated.count(), 1);

    SingleInstance third(key);
    EXPECT_FALSE(third.claim());
    ASSERT_TRUE(activated.wait(5000));
    EXPECT_EQ(activated.count(), 2);
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
