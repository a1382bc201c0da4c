#include "ui/shell/RoundEndNotice.h"
#include "FakeNotificationServer.h"
#include "ViewModelFixture.h"
#include "music/EventLoopWait.h"
#include "music/PrivateBus.h"
#include "ui/shell/AppIdentity.h"
#include "ui/shell/DesktopNotifier.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QTest>
#include <QWindow>
#include <private/qwindow_p.h>
#include <vector>

namespace quill::test {

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

TEST_F(RoundEndNoticeTest, OnWaylandAWindowTheCompositorStoppedShowingCountsAsMinimised) {
    // The watch Wayland gets: a shown window that lost its exposure is minimised.
    notice.reset();
    delete window.findChild<MinimisedWatch*>();
    new MinimisedWatch(&window, fakes.scheduler, /*exposureCounts=*/true);
    notice = std::make_unique<RoundEndNotice>(store.get(), &window, notifier.get());
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    QWindowPrivate::get(&window)->exposed = false; // as Qt marks it, then tells the window
    QExposeEvent unexposed{QRegion()};
    QCoreApplication::sendEvent(&window, &unexposed);
    completeRound();
    ASSERT_TRUE(waitUntil([&] { return fake.shown.size() == 1; }));
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
