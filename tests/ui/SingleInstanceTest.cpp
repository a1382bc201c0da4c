#include "ui/shell/SingleInstance.h"

#include <QLocalServer>
#include <QSignalSpy>
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

TEST(SingleInstanceTest, DifferentKeysDoNotMeet) {
    SingleInstance a(uniqueKey());
    SingleInstance b(uniqueKey());
    EXPECT_TRUE(a.claim());
    EXPECT_TRUE(b.claim());
    EXPECT_NE(a.serverName(), b.serverName());
}

} // namespace
