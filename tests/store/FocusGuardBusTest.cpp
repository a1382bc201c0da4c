// The focus guard's desktop side on a private bus: a notification server with Plasma's
// inhibition or GNOME Shell's name, and logind's session and the screensavers reporting locks.
#include "music/EventLoopWait.h"
#include "music/PrivateBus.h"
#include "store/focusguard/DesktopNotificationHold.h"
#include "store/focusguard/PlasmaNotificationHold.h"
#include "store/focusguard/SessionLockWatch.h"
#include "support/FakeFocusGuard.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <gtest/gtest.h>
#include <set>

namespace quill::test {

/// org.freedesktop.Notifications as far as holding goes, as Plasma has it.
class FakeNotificationServer : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")
    Q_PROPERTY(bool Inhibited READ inhibited)

public:
    bool inhibited() const { return !cookies.empty(); }
    std::set<uint> cookies;
    int calls = 0;

public Q_SLOTS:
    uint Inhibit(const QString&, const QString&, const QVariantMap&) {
        ++calls;
        cookies.insert(++m_next);
        return m_next;
    }
    void UnInhibit(uint cookie) {
        ++calls;
        cookies.erase(cookie);
    }

private:
    uint m_next = 0;
};

/// logind's manager, answering for one session.
class FakeLoginManager : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.login1.Manager")

public:
    static QString sessionPath() { return QStringLiteral("/org/freedesktop/login1/session/_37"); }
    QStringList asked;

public Q_SLOTS:
    QDBusObjectPath GetSession(const QString& id) {
        asked << id;
        return QDBusObjectPath(sessionPath());
    }
    QDBusObjectPath GetSessionByPID(uint) {
        asked << QStringLiteral("by pid");
        return QDBusObjectPath(sessionPath());
    }
};

namespace {

class FocusGuardBusTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(bus.isRunning()) << bus.error().toStdString();
        app = QDBusConnection::connectToBus(bus.address(), QStringLiteral("guard-app"));
        desktop = QDBusConnection::connectToBus(bus.address(), QStringLiteral("guard-desktop"));
        ASSERT_TRUE(app.isConnected() && desktop.isConnected());
    }
    void TearDown() override {
        QDBusConnection::disconnectFromBus(QStringLiteral("guard-app"));
        QDBusConnection::disconnectFromBus(QStringLiteral("guard-desktop"));
    }
    void serveNotifications() {
        ASSERT_TRUE(desktop.registerService(QStringLiteral("org.freedesktop.Notifications")));
        ASSERT_TRUE(desktop.registerObject(
            QStringLiteral("/org/freedesktop/Notifications"), &server,
            QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllProperties));
    }
    void emitSignal(const QString& path, const QString& interface, const QString& name,
                    const QVariantList& arguments) {
        QDBusMessage signal = QDBusMessage::createSignal(path, interface, name);
        signal.setArguments(arguments);
        desktop.send(signal);
    }

    /// Lets every signal already sent reach the watch before counting starts afresh: the bus
    /// keeps each connection's messages in order, so a round trip on each flushes them.
    void settleSignals() {
        for (QDBusConnection* connection : {&desktop, &app})
            connection->interface()->isServiceRegistered(QStringLiteral("org.freedesktop.DBus"));
        drainEvents();
    }

    PrivateBus bus;
    QDBusConnection app{QString()};
    QDBusConnection desktop{QString()};
    FakeNotificationServer server;
};

std::optional<bool> probed(NotificationHold& hold) {
    std::optional<bool> answer;
    hold.probe([&](bool available) { answer = available; });
    waitUntil([&] { return answer.has_value(); });
    return answer;
}

TEST_F(FocusGuardBusTest, PlasmasInhibitionIsTakenAndGivenBackInOrderAndOnDestruction) {
    serveNotifications();
    auto owned = std::make_unique<PlasmaNotificationHold>(app, QStringLiteral("quillmere"));
    PlasmaNotificationHold& hold = *owned;
    EXPECT_EQ(probed(hold), true);
    hold.setHeld(true);
    ASSERT_TRUE(waitUntil([&] { return server.inhibited(); }));
    hold.setHeld(false);
    ASSERT_TRUE(waitUntil([&] { return !server.inhibited(); }));

    // A release asked for before the cookie came back still releases it.
    hold.setHeld(true);
    hold.setHeld(false);
    ASSERT_TRUE(waitUntil([&] { return server.calls == 4; }));
    EXPECT_FALSE(server.inhibited());

    hold.setHeld(true);
    ASSERT_TRUE(waitUntil([&] { return server.inhibited(); }));
    EXPECT_EQ(probed(hold), true) << "a round trip: the cookie is in";
    owned.reset();
    EXPECT_TRUE(waitUntil([&] { return !server.inhibited(); }));
}

TEST_F(FocusGuardBusTest, TheDesktopDecidesWhichHoldIsUsed) {
    struct Case {
        const char* what;
        bool inhibition;
        bool gnomeShell;
        bool bannersReadable;
        int expected; // 0 none, 1 inhibition, 2 banner switch
    };
    const Case cases[] = {
        {"Plasma", true, false, true, 1},
        {"GNOME Shell", false, true, true, 2},
        {"GNOME Shell without the setting", false, true, false, 0},
        {"GNOME's settings without GNOME Shell", false, false, true, 0},
    };
    const QString shell = QStringLiteral("org.gnome.Shell");
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        if (c.gnomeShell)
            ASSERT_TRUE(desktop.registerService(shell));
        auto inhibition = std::make_shared<RecordingNotificationHold>();
        auto banners = std::make_shared<RecordingNotificationHold>();
        DesktopNotificationHold hold(app, inhibition, banners);
        hold.setHeld(true); // asked before the choice: waits for it
        std::optional<bool> available;
        hold.probe([&](bool a) { available = a; });
        inhibition->answerProbes(c.inhibition);
        waitUntil([&] { return available.has_value() || !banners->answers.empty(); });
        banners->answerProbes(c.bannersReadable);
        ASSERT_TRUE(waitUntil([&] { return available.has_value(); }));
        EXPECT_EQ(*available, c.expected != 0);
        EXPECT_EQ(inhibition->held(), c.expected == 1);
        EXPECT_EQ(banners->held(), c.expected == 2);
        EXPECT_EQ(probed(hold), c.expected != 0) << "asked again, the same answer";
        desktop.unregisterService(shell);
    }
}

class LockCounter {
public:
    explicit LockCounter(ScreenLockWatch& watch) {
        watch.watch([this] { ++count; });
    }
    int count = 0;
};

TEST_F(FocusGuardBusTest, LogindsLockAndLockedHintOfThisSessionAreLocks) {
    FakeLoginManager manager;
    ASSERT_TRUE(desktop.registerService(QStringLiteral("org.freedesktop.login1")));
    ASSERT_TRUE(desktop.registerObject(QStringLiteral("/org/freedesktop/login1"), &manager,
                                       QDBusConnection::ExportAllSlots));
    SessionLockWatch watch(app, app, QStringLiteral("37"));
    LockCounter locks(watch);
    ASSERT_TRUE(waitUntil([&] { return !manager.asked.isEmpty(); }));
    EXPECT_EQ(manager.asked, QStringList{QStringLiteral("37")});
    const QString session = FakeLoginManager::sessionPath();
    const QString sessionInterface = QStringLiteral("org.freedesktop.login1.Session");
    // The watch subscribes once the answer is in; until then a signal may pass unseen.
    ASSERT_TRUE(waitUntil([&] {
        emitSignal(session, sessionInterface, QStringLiteral("Lock"), {});
        drainEvents();
        return locks.count > 0;
    }));

    settleSignals();
    locks.count = 0;
    const QString properties = QStringLiteral("org.freedesktop.DBus.Properties");
    auto hint = [&](const QString& name, bool value) {
        emitSignal(session, properties, QStringLiteral("PropertiesChanged"),
                   {sessionInterface, QVariantMap{{name, value}}, QStringList{}});
    };
    hint(QStringLiteral("LockedHint"), false);
    hint(QStringLiteral("Active"), true);
    emitSignal(QStringLiteral("/org/freedesktop/login1/session/_2"), sessionInterface,
               QStringLiteral("Lock"), {}); // another user's session
    hint(QStringLiteral("LockedHint"), true);
    ASSERT_TRUE(waitUntil([&] { return locks.count > 0; }));
    drainEvents();
    EXPECT_EQ(locks.count, 1);
}

TEST_F(FocusGuardBusTest, WithoutLogindTheScreensaversReportLocks) {
    auto active = [&](const char* path, const char* interface, bool on) {
        emitSignal(QString::fromLatin1(path), QString::fromLatin1(interface),
                   QStringLiteral("ActiveChanged"), {on});
    };
    // The same bus stands in for a system bus without logind.
    SessionLockWatch watch(app, app, QString());
    LockCounter locks(watch);
    ASSERT_TRUE(waitUntil([&] {
        active("/org/gnome/ScreenSaver", "org.gnome.ScreenSaver", true);
        drainEvents();
        return locks.count > 0;
    }));

    settleSignals();
    locks.count = 0;
    active("/org/gnome/ScreenSaver", "org.gnome.ScreenSaver", false);
    active("/org/freedesktop/ScreenSaver", "org.freedesktop.ScreenSaver", true);
    ASSERT_TRUE(waitUntil([&] { return locks.count > 0; }));
    drainEvents();
    EXPECT_EQ(locks.count, 1);

    SessionLockWatch noSystemBus(QDBusConnection(QStringLiteral("none")), app, QString());
    LockCounter moreLocks(noSystemBus);
    ASSERT_TRUE(waitUntil([&] {
        active("/ScreenSaver", "org.freedesktop.ScreenSaver", true);
        drainEvents();
        return moreLocks.count > 0;
    }));
}

} // namespace
} // namespace quill::test

#include "FocusGuardBusTest.moc"
