#include "ui/shell/RoundEndNotice.h"
#include "ViewModelFixture.h"
#include "music/EventLoopWait.h"
#include "music/PrivateBus.h"
#include "ui/shell/AppIdentity.h"
#include "ui/shell/DesktopNotifier.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QWindow>
#include <vector>

namespace quill::test {

/// Stands in for the desktop's notification server on the test's own bus.
class FakeNotificationServer : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    struct Shown {
        uint replaces;
        QString icon, summary, body;
        QStringList actions;
        QVariantMap hints;
    };
    std::vector<Shown> shown;
    std::vector<uint> closed;

public Q_SLOTS:
    uint Notify(const QString&, uint replaces, const QString& icon, const QString& summary,
                const QString& body, const QStringList& actions, const QVariantMap& hints, int) {
        shown.push_back({replaces, icon, summary, body, actions, hints});
        return uint(100 + shown.size());
    }
    void CloseNotification(uint id) { closed.push_back(id); }
    QStringList GetCapabilities() { return {QStringLiteral("actions"), QStringLiteral("body")}; }
};

namespace {

const QString kPath = QStringLiteral("/org/freedesktop/Notifications");
const QString kInterface = QStringLiteral("org.freedesktop.Notifications");

class RoundEndNoticeTest : public ViewModelTest {
protected:
    void SetUp() override {
        ASSERT_TRUE(bus.isRunning()) << bus.error().toStdString();
        server = QDBusConnection::connectToBus(bus.address(), QStringLiteral("notify-server"));
        client = QDBusConnection::connectToBus(bus.address(), QStringLiteral("notify-client"));
        ASSERT_TRUE(server.registerService(kInterface));
        ASSERT_TRUE(server.registerObject(kPath, &fake, QDBusConnection::ExportAllSlots));
        notifier = std::make_unique<DesktopNotifier>(client);
        notice = std::make_unique<RoundEndNotice>(store.get(), &window, notifier.get());
        window.resize(400, 300);
        window.show();
    }
    void TearDown() override {
        notice.reset();
        notifier.reset();
        QDBusConnection::disconnectFromBus(QStringLiteral("notify-client"));
        QDBusConnection::disconnectFromBus(QStringLiteral("notify-server"));
    }

    /// Everything the app sent so far has reached the server: the bus keeps one sender's
    /// messages in order, so a reply to a later call proves the earlier ones arrived.
    bool roundTrip() {
        auto* watcher = new QDBusPendingCallWatcher(client.asyncCall(QDBusMessage::createMethodCall(
            kInterface, kPath, kInterface, QStringLiteral("GetCapabilities"))));
        bool done = false;
        QObject::connect(watcher, &QDBusPendingCallWatcher::finished, [&] { done = true; });
        const bool ok = waitUntil([&] { return done; });
        delete watcher;
        return ok;
    }
    void clickNotification(uint id) {
        QDBusMessage signal =
            QDBusMessage::createSignal(kPath, kInterface, QStringLiteral("ActionInvoked"));
        signal << id << QStringLiteral("default");
        server.send(signal);
    }
    void completeRound() {
        start();
        advance(store->settings().selectedDurationMinutes * 60'000 + 1'000);
        ASSERT_TRUE(store->showCompletionSheet());
    }

    PrivateBus bus;
    QDBusConnection server{QString()};
    QDBusConnection client{QString()};
    FakeNotificationServer fake;
    QWindow window;
    std::unique_ptr<DesktopNotifier> notifier;
    std::unique_ptr<RoundEndNotice> notice;
};

TEST_F(RoundEndNoticeTest, MinimisedWindowIsToldOnceAndTheClickBringsItBackToTheReview) {
    window.showMinimized();
    completeRound();
    ASSERT_TRUE(waitUntil([&] { return fake.shown.size() == 1; }));
    const auto& shown = fake.shown.front();
    EXPECT_EQ(shown.summary, RoundEndNotice::completedSummary());
    EXPECT_EQ(shown.icon, appId());
    EXPECT_EQ(shown.hints.value(QStringLiteral("desktop-entry")).toString(), appId());
    EXPECT_EQ(shown.actions.value(0), QStringLiteral("default")) << "a click runs the default";

    clickNotification(999);
    ASSERT_TRUE(roundTrip());
    EXPECT_TRUE(window.windowStates() & Qt::WindowMinimized) << "another app's notification";

    clickNotification(101);
    ASSERT_TRUE(waitUntil([&] { return !(window.windowStates() & Qt::WindowMinimized); }));
    EXPECT_TRUE(window.isVisible());
    EXPECT_TRUE(store->showCompletionSheet()) << "the review is still waiting";

    store->saveCompletion(4, 3, QString());
    ASSERT_TRUE(waitUntil([&] { return !fake.closed.empty(); }));
    EXPECT_EQ(fake.closed, std::vector<uint>{101}) << "withdrawn once the review is saved";
}

TEST_F(RoundEndNoticeTest, OnlyAWindowOutOfSightIsTold) {
    completeRound();
    store->abandonSession();
    ASSERT_TRUE(roundTrip());
    EXPECT_TRUE(fake.shown.empty()) << "the visible review sheet says it all";
    EXPECT_TRUE(fake.closed.empty());

    // Closed to the tray: hidden rather than minimised; a round ended early says so.
    window.hide();
    start();
    advance(120'000);
    store->endSessionForReview();
    ASSERT_TRUE(waitUntil([&] { return fake.shown.size() == 1; }));
    EXPECT_EQ(fake.shown.front().summary, RoundEndNotice::endedSummary());
    clickNotification(101);
    ASSERT_TRUE(waitUntil([&] { return window.isVisible(); }));
}

TEST_F(RoundEndNoticeTest, WithoutANotificationServerNothingBreaks) {
    server.unregisterService(kInterface);
    window.showMinimized();
    completeRound();
    ASSERT_TRUE(roundTrip()) << "the failed call has been answered by now";
    store->abandonSession(); // withdraws a notification that never got an id
    ASSERT_TRUE(roundTrip());
    EXPECT_TRUE(fake.shown.empty());
    EXPECT_TRUE(window.windowStates() & Qt::WindowMinimized);
}

} // namespace
} // namespace quill::test

#include "RoundEndNoticeTest.moc"
