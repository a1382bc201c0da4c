#include "ui/shell/TrayHostWatch.h"

#include "music/PrivateBus.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QTest>
#include <gtest/gtest.h>

namespace quill::test {
namespace {

/// The desktop's tray registry, served from the test's own thread: a check that waited for
/// its answer would hang here.
class StandInWatcher : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ hostRegistered)

public:
    bool host = false;
    int asked = 0;
    bool hostRegistered() {
        ++asked;
        return host;
    }

Q_SIGNALS:
    void StatusNotifierHostRegistered();
};

TEST(TrayHostWatch, AnswersThroughTheEventLoopAndNoticesAHostThatComesLater) {
    PrivateBus bus;
    ASSERT_TRUE(bus.isRunning()) << bus.error().toStdString();
    QDBusConnection app = QDBusConnection::connectToBus(bus.address(), QStringLiteral("app"));
    QDBusConnection desktop =
        QDBusConnection::connectToBus(bus.address(), QStringLiteral("desktop"));

    TrayHostWatch early(app);
    early.start(); // before the desktop's registry is there
    StandInWatcher watcher;
    desktop.registerObject(QStringLiteral("/StatusNotifierWatcher"), &watcher,
                           QDBusConnection::ExportAllProperties |
                               QDBusConnection::ExportAllSignals);
    desktop.registerService(QStringLiteral("org.kde.StatusNotifierWatcher"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return watcher.asked > 0; }));
    app.interface()->isServiceRegistered(QStringLiteral("x.y")); // the answer is in by now
    QCoreApplication::processEvents();
    EXPECT_FALSE(early.found()) << "a registry without a host is no tray";

    watcher.host = true;
    Q_EMIT watcher.StatusNotifierHostRegistered();
    EXPECT_TRUE(QTest::qWaitFor([&] { return early.found(); }));

    TrayHostWatch late(app);
    late.start();
    EXPECT_FALSE(late.found()) << "the answer comes through the event loop";
    EXPECT_TRUE(QTest::qWaitFor([&] { return late.found(); }));
}

} // namespace
} // namespace quill::test

#include "TrayHostWatchTest.moc"
