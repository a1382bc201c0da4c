// The real app under a real compositor: KWin (Plasma's compositor) started headless for this
// executable, with a throwaway home, a private session bus and a second private bus standing
// in for the system bus. Windows are read and minimised through KWin's own scripting, the
// app is pressed through its accessibility interface, and stand-ins for the notification
// server and the tray host answer on the session bus. Skipped when KWin is not installed.
#include "FakeNotificationServer.h"
#include "music/PrivateBus.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusReply>
#include <QDBusVariant>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>
#include <gtest/gtest.h>

#include <csignal>
#include <memory>
#include <mutex>
#include <sys/prctl.h>

using namespace quill::test;

namespace {

constexpr int kWaitMs = 30000; // a software-rendering compositor on a loaded machine
const QString kMainTitle = QStringLiteral("Quillmere");
const QString kPanelTitle = QStringLiteral("Quillmere倒计时");
const QSize kScreen(1024, 768);
const QString kTrayPanelTitle = QStringLiteral("Quillmere托盘面板");

/// Receives what the test's KWin scripts report back over the bus.
class ScriptProbe : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.quillmere.TestProbe")

public:
    QString last;
    int reports = 0;

public Q_SLOTS:
    void report(const QString& json) {
        last = json;
        ++reports;
    }
};

/// The tray host's registry, as Plasma's kded runs it. Qt asks it synchronously from the
/// app's UI thread, so it answers from a thread of its own: the test's thread may itself be
/// waiting on the app just then.
class StatusNotifierWatcher : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ hostRegistered)

public:
    bool hostRegistered() const { return true; }
    QStringList items() const {
        std::lock_guard lock(m_mutex);
        return m_items;
    }

public Q_SLOTS:
    void RegisterStatusNotifierItem(const QString& service) {
        std::lock_guard lock(m_mutex);
        m_items << service;
    }

private:
    mutable std::mutex m_mutex;
    QStringList m_items;
};

void dieWithTest(QProcess& p) {
    // A crashed test must not leave a compositor behind.
    p.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGTERM); });
}

void stop(QProcess& p) {
    if (p.state() == QProcess::NotRunning)
        return;
    p.terminate();
    if (!p.waitForFinished(5000))
        p.kill();
    p.waitForFinished(1000);
}

/// KWin with XWayland on a virtual screen, its buses and its home; the app runs in it.
class KWinSession {
public:
    QString problem;
    QProcessEnvironment env; // what a client of this session sees
    QDBusConnection bus{QString()};
    FakeNotificationServer notifications;
    ScriptProbe probe;
    StatusNotifierWatcher tray;

    bool start() {
        const QString kwin = QStandardPaths::findExecutable(QStringLiteral("kwin_wayland"));
        if (kwin.isEmpty())
            return fail("kwin_wayland is not installed");
        if (!session.isRunning() || !system.isRunning())
            return fail("no private bus: " + session.error());
        // The packaged binary carries a file capability a container may not grant; a copy
        // (still named kwin_wayland, which its platform plugin insists on) runs without it.
        const QString copy = root.filePath(QStringLiteral("bin/kwin_wayland"));
        QDir().mkpath(root.filePath(QStringLiteral("bin")));
        if (!QFile::copy(kwin, copy))
            return fail("kwin_wayland could not be copied");
        QFile::setPermissions(copy, QFile::ReadOwner | QFile::ExeOwner);

        env = QProcessEnvironment::systemEnvironment();
        for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "XAUTHORITY", "QT_QPA_PLATFORM",
                                 "DESKTOP_STARTUP_ID", "XDG_ACTIVATION_TOKEN", "SESSION_MANAGER"})
            env.remove(QString::fromLatin1(name));
        const QString home = root.filePath(QStringLiteral("home"));
        const QString runtime = root.filePath(QStringLiteral("run"));
        for (const QString& dir :
             {home, runtime, home + "/data", home + "/config", home + "/cache"})
            QDir().mkpath(dir);
        QFile::setPermissions(runtime, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        env.insert(QStringLiteral("HOME"), home);
        env.insert(QStringLiteral("XDG_DATA_HOME"), home + "/data");
        env.insert(QStringLiteral("XDG_CONFIG_HOME"), home + "/config");
        env.insert(QStringLiteral("XDG_CACHE_HOME"), home + "/cache");
        env.insert(QStringLiteral("XDG_RUNTIME_DIR"), runtime);
        env.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), session.address());
        env.insert(QStringLiteral("DBUS_SYSTEM_BUS_ADDRESS"), system.address());

        bus = QDBusConnection::connectToBus(session.address(), QStringLiteral("kwin-session"));
        if (!bus.isConnected())
            return fail("the test could not join its session bus");
        bus.registerService(QStringLiteral("org.freedesktop.Notifications"));
        bus.registerObject(QStringLiteral("/org/freedesktop/Notifications"), &notifications,
                           QDBusConnection::ExportAllSlots);
        bus.registerService(QStringLiteral("org.quillmere.TestProbe"));
        bus.registerObject(QStringLiteral("/"), &probe, QDBusConnection::ExportAllSlots);
        trayThread.start();
        tray.moveToThread(&trayThread);
        QDBusConnection trayBus =
            QDBusConnection::connectToBus(session.address(), QStringLiteral("kwin-tray"));
        trayBus.registerService(QStringLiteral("org.kde.StatusNotifierWatcher"));
        trayBus.registerObject(QStringLiteral("/StatusNotifierWatcher"), &tray,
                               QDBusConnection::ExportAllSlots |
                                   QDBusConnection::ExportAllProperties);

        // The screen reader's bus, which the app's accessibility bridge joins.
        atspi.setProcessEnvironment(env);
        dieWithTest(atspi);
        atspi.start(QStringLiteral("/usr/libexec/at-spi-bus-launcher"),
                    {QStringLiteral("--launch-immediately")});

        // QPainter compositing is the lightest on a machine without a GPU. The command
        // after the options runs once XWayland is up and tells where it is.
        QProcessEnvironment kwinEnv = env;
        kwinEnv.insert(QStringLiteral("KWIN_COMPOSE"), QStringLiteral("Q"));
        kwin_.setProcessEnvironment(kwinEnv);
        kwin_.setProcessChannelMode(QProcess::MergedChannels);
        kwin_.setStandardOutputFile(root.filePath(QStringLiteral("kwin.log")));
        dieWithTest(kwin_);
        const QString x11 = root.filePath(QStringLiteral("x11"));
        const QString tell = root.filePath(QStringLiteral("tell-x11.sh"));
        QFile script(tell);
        script.open(QIODevice::WriteOnly);
        script.write("#!/bin/sh\nprintf '%s\\n%s\\n' \"$DISPLAY\" \"$XAUTHORITY\" > \"$1.part\" && "
                     "mv \"$1.part\" \"$1\"\n");
        script.close();
        script.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
        kwin_.start(copy, {"--virtual", "--xwayland", "--width", QString::number(kScreen.width()),
                           "--height", QString::number(kScreen.height()), "--socket",
                           "quillmere-test", "--no-lockscreen", "--no-global-shortcuts",
                           "--no-kactivities", tell + " " + x11});
        if (!kwin_.waitForStarted(10000))
            return fail("kwin_wayland did not start");
        if (!QTest::qWaitFor(
                [&] { return QFile::exists(x11) || kwin_.state() != QProcess::Running; },
                kWaitMs) ||
            !QFile::exists(x11))
            return fail("KWin did not come up: " + log());
        QFile x11File(x11);
        x11File.open(QIODevice::ReadOnly);
        const QList<QByteArray> x11Lines = x11File.readAll().split('\n');
        display = QString::fromLocal8Bit(x11Lines.value(0));
        xauthority = QString::fromLocal8Bit(x11Lines.value(1));
        if (!QTest::qWaitFor([&] { return hasService(QStringLiteral("org.a11y.Bus")); }, kWaitMs))
            return fail("the accessibility bus did not start");
        return true;
    }

    ~KWinSession() {
        stop(kwin_);
        stop(atspi);
        QDBusConnection::disconnectFromBus(QStringLiteral("kwin-tray"));
        trayThread.quit();
        trayThread.wait();
        QDBusConnection::disconnectFromBus(QStringLiteral("kwin-session"));
        QDBusConnection::disconnectFromBus(QStringLiteral("kwin-a11y"));
    }

    /// What the app needs to run in this session on the given Qt platform.
    QProcessEnvironment appEnvironment(const QString& platform) const {
        QProcessEnvironment e = env;
        e.insert(QStringLiteral("QT_QPA_PLATFORM"), platform);
        // Both, as in a Wayland session: the platform says which one the app uses.
        e.insert(QStringLiteral("WAYLAND_DISPLAY"), QStringLiteral("quillmere-test"));
        e.insert(QStringLiteral("DISPLAY"), display);
        if (!xauthority.isEmpty())
            e.insert(QStringLiteral("XAUTHORITY"), xauthority);
        e.insert(QStringLiteral("QT_LINUX_ACCESSIBILITY_ALWAYS_ON"), QStringLiteral("1"));
        e.insert(QStringLiteral("SDL_AUDIODRIVER"), QStringLiteral("dummy"));
        e.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
        return e;
    }

    /// Runs a KWin script with `pid` bound to the app's process id and returns what it
    /// reported through report(…): KWin's view of the windows, or of what it just did.
    QJsonArray runScript(qint64 pid, const QString& body) {
        const QString name = QStringLiteral("quillmere-test-%1").arg(++scripts);
        const QString path = root.filePath(name + ".js");
        QFile file(path);
        file.open(QIODevice::WriteOnly);
        file.write(QStringLiteral(
                       "var pid = %1;\n"
                       "function app() { return workspace.clientList().filter(function (c) { "
                       "return c.pid === pid; }); }\n"
                       "function describe(c) { return { caption: c.caption, minimized: "
                       "c.minimized, active: c.active, keepAbove: c.keepAbove, onAllDesktops: "
                       "c.onAllDesktops, skipTaskbar: c.skipTaskbar, x: c.x, y: c.y, right: c.x + "
                       "c.width, bottom: c.y + c.height }; }\n"
                       "%2\n"
                       "callDBus('org.quillmere.TestProbe', '/', 'org.quillmere.TestProbe', "
                       "'report', JSON.stringify(app().map(describe)));\n")
                       .arg(pid)
                       .arg(body)
                       .toUtf8());
        file.close();
        const int before = probe.reports;
        QDBusReply<int> id =
            kwinCall(QStringLiteral("/Scripting"), QStringLiteral("org.kde.kwin.Scripting"),
                     QStringLiteral("loadScript"), {path, name});
        if (!id.isValid() || id.value() < 0) {
            ADD_FAILURE() << "KWin did not load the script: " << id.error().message().toStdString();
            return {};
        }
        // Scripts stay loaded: KWin numbers a new one by how many are loaded, so after an
        // unload a new script can get the D-Bus path of one still being torn down.
        kwinCall(QStringLiteral("/Scripting"), QStringLiteral("org.kde.kwin.Scripting"),
                 QStringLiteral("start"), {});
        const bool reported = QTest::qWaitFor([&] { return probe.reports > before; }, kWaitMs);
        EXPECT_TRUE(reported) << "the script did not report";
        return QJsonDocument::fromJson(probe.last.toUtf8()).array();
    }

    /// Polls KWin's view of the app's windows until `wanted` holds.
    bool waitForWindows(qint64 pid, const std::function<bool(const QJsonArray&)>& wanted,
                        QJsonArray* seen = nullptr) {
        QJsonArray windows;
        const bool ok = QTest::qWaitFor(
            [&] {
                windows = runScript(pid, {});
                return wanted(windows);
            },
            kWaitMs);
        if (seen)
            *seen = windows;
        return ok;
    }

    /// Presses the app's control with this accessible name, as a screen reader does.
    bool press(qint64 pid, const QString& name) {
        QDBusConnection a11y = accessibilityBus();
        if (!a11y.isConnected())
            return false;
        QString owner;
        const QStringList names = a11y.interface()->registeredServiceNames().value();
        for (const QString& n : names) {
            if (n.startsWith(QLatin1Char(':')) && a11y.interface()->servicePid(n).value() == pid)
                owner = n;
        }
        if (owner.isEmpty())
            return false;
        const QString path =
            find(a11y, owner, QStringLiteral("/org/a11y/atspi/accessible/root"), name, 0);
        if (path.isEmpty())
            return false;
        QDBusMessage call = QDBusMessage::createMethodCall(
            owner, path, QStringLiteral("org.a11y.atspi.Action"), QStringLiteral("DoAction"));
        call << 0;
        return a11y.call(call, QDBus::Block, 10000).type() == QDBusMessage::ReplyMessage;
    }

    /// Calls the tray item the app registered, as the desktop's tray does.
    QDBusMessage callTrayItem(const QString& path, const QString& interface, const QString& method,
                              const QVariantList& args) {
        const QStringList items = tray.items();
        if (items.isEmpty())
            return {};
        QDBusMessage call = QDBusMessage::createMethodCall(items.last(), path, interface, method);
        call.setArguments(args);
        return bus.call(call, QDBus::Block, 10000);
    }
    bool clickTrayItem() {
        return callTrayItem(QStringLiteral("/StatusNotifierItem"),
                            QStringLiteral("org.kde.StatusNotifierItem"),
                            QStringLiteral("Activate"), {0, 0})
                   .type() == QDBusMessage::ReplyMessage;
    }
    /// Chooses the entry with this label in the item's menu.
    bool chooseTrayMenuEntry(const QString& label) {
        const QString menu = QStringLiteral("com.canonical.dbusmenu");
        QList<int> ids; // the first few: the menu has two entries
        for (int id = 1; id < 30; ++id)
            ids << id;
        const QDBusMessage reply =
            callTrayItem(QStringLiteral("/MenuBar"), menu, QStringLiteral("GetGroupProperties"),
                         {QVariant::fromValue(ids), QStringList{QStringLiteral("label")}});
        if (reply.type() != QDBusMessage::ReplyMessage)
            return false;
        const QDBusArgument list = reply.arguments().first().value<QDBusArgument>();
        int wanted = -1;
        list.beginArray();
        while (!list.atEnd()) {
            int id = 0;
            QVariantMap properties;
            list.beginStructure();
            list >> id >> properties;
            list.endStructure();
            if (properties.value(QStringLiteral("label")).toString() == label)
                wanted = id;
        }
        list.endArray();
        return wanted >= 0 &&
               callTrayItem(
                   QStringLiteral("/MenuBar"), menu, QStringLiteral("Event"),
                   {wanted, QStringLiteral("clicked"), QVariant::fromValue(QDBusVariant(0)), 0u})
                       .type() == QDBusMessage::ReplyMessage;
    }

    /// Types keys on the XWayland display, where X11 clients take them as from a keyboard.
    bool typeOnX11(const QString& keys) {
        const QString xdotool = QStandardPaths::findExecutable(QStringLiteral("xdotool"));
        if (xdotool.isEmpty())
            return false;
        QProcess p;
        QProcessEnvironment e = env;
        e.insert(QStringLiteral("DISPLAY"), display);
        e.insert(QStringLiteral("XAUTHORITY"), xauthority);
        p.setProcessEnvironment(e);
        p.start(xdotool, {QStringLiteral("key"), keys});
        return p.waitForFinished(10000) && p.exitCode() == 0;
    }

    QString log() const {
        QFile f(root.filePath(QStringLiteral("kwin.log")));
        f.open(QIODevice::ReadOnly);
        return QString::fromLocal8Bit(f.readAll().right(2000));
    }

private:
    bool fail(const QString& why) {
        problem = why;
        return false;
    }
    bool hasService(const QString& name) {
        return bus.interface()->isServiceRegistered(name).value();
    }

    QDBusMessage kwinCall(const QString& path, const QString& interface, const QString& method,
                          const QVariantList& args) {
        QDBusMessage call =
            QDBusMessage::createMethodCall(QStringLiteral("org.kde.KWin"), path, interface, method);
        call.setArguments(args);
        return bus.call(call, QDBus::Block, 10000);
    }

    QDBusConnection accessibilityBus() {
        QDBusConnection a11y(QStringLiteral("kwin-a11y"));
        if (a11y.isConnected())
            return a11y;
        QDBusReply<QString> address = bus.call(QDBusMessage::createMethodCall(
            QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"),
            QStringLiteral("org.a11y.Bus"), QStringLiteral("GetAddress")));
        return QDBusConnection::connectToBus(address.value(), QStringLiteral("kwin-a11y"));
    }

    /// Depth-first through the accessible tree for a node named exactly `name`.
    QString find(QDBusConnection& a11y, const QString& owner, const QString& path,
                 const QString& name, int depth) {
        if (depth > 40)
            return {};
        QDBusMessage get = QDBusMessage::createMethodCall(
            owner, path, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
        get << QStringLiteral("org.a11y.atspi.Accessible") << QStringLiteral("Name");
        const QDBusMessage named = a11y.call(get, QDBus::Block, 10000);
        if (!named.arguments().isEmpty() &&
            named.arguments().first().value<QDBusVariant>().variant().toString() == name)
            return path;
        const QDBusMessage children = a11y.call(
            QDBusMessage::createMethodCall(owner, path, QStringLiteral("org.a11y.atspi.Accessible"),
                                           QStringLiteral("GetChildren")),
            QDBus::Block, 10000);
        if (children.type() != QDBusMessage::ReplyMessage || children.arguments().isEmpty())
            return {};
        const QDBusArgument list = children.arguments().first().value<QDBusArgument>();
        QStringList paths;
        list.beginArray();
        while (!list.atEnd()) {
            QString service;
            QDBusObjectPath child;
            list.beginStructure();
            list >> service >> child;
            list.endStructure();
            paths << child.path();
        }
        list.endArray();
        for (const QString& child : paths) {
            const QString found = find(a11y, owner, child, name, depth + 1);
            if (!found.isEmpty())
                return found;
        }
        return {};
    }

    QTemporaryDir root;
    PrivateBus session, system;
    QProcess kwin_, atspi;
    QThread trayThread;
    QString display, xauthority;
    int scripts = 0;
};

KWinSession* kwin = nullptr;
bool kwinReady = false;

bool has(const QJsonArray& windows, const QString& caption,
         const std::function<bool(const QJsonObject&)>& also = {}) {
    for (const QJsonValue& w : windows) {
        const QJsonObject o = w.toObject();
        if (o.value(QStringLiteral("caption")).toString() == caption && (!also || also(o)))
            return true;
    }
    return false;
}
bool minimized(const QJsonObject& o) {
    return o.value(QStringLiteral("minimized")).toBool();
}

/// The app as a user starts it, on one Qt platform, in the KWin session.
class CompositorTest : public ::testing::TestWithParam<const char*> {
protected:
    static void SetUpTestSuite() {
        kwin = new KWinSession;
        kwinReady = kwin->start();
    }
    static void TearDownTestSuite() {
        delete kwin;
        kwin = nullptr;
    }
    void SetUp() override {
        if (!kwinReady) {
            if (kwin->problem.contains(QLatin1String("not installed")))
                GTEST_SKIP() << kwin->problem.toStdString();
            FAIL() << kwin->problem.toStdString();
        }
        app.setProcessEnvironment(kwin->appEnvironment(QString::fromLatin1(GetParam())));
        app.setProcessChannelMode(QProcess::MergedChannels);
        dieWithTest(app);
        app.start(QStringLiteral(QUILL_APP_BINARY), {});
        ASSERT_TRUE(app.waitForStarted(10000));
        ASSERT_TRUE(kwin->waitForWindows(app.processId(), [](const QJsonArray& w) {
            return has(w, kMainTitle, [](const QJsonObject& o) { return !minimized(o); });
        })) << appLog();
    }
    void TearDown() override { stop(app); }
    std::string appLog() { return QString::fromLocal8Bit(app.readAll()).toStdString(); }
    qint64 pid() { return app.processId(); }
    void setMainMinimised(bool minimise) {
        kwin->runScript(pid(),
                        QStringLiteral("app().forEach(function (c) { if (c.caption === '%1') "
                                       "{ c.minimized = %2; %3 } });")
                            .arg(kMainTitle, minimise ? "true" : "false",
                                 minimise ? "" : "workspace.activeClient = c;"));
    }

    void startRound() {
        ASSERT_TRUE(QTest::qWaitFor(
            [&] { return kwin->press(pid(), QStringLiteral("开始这一轮")); }, kWaitMs))
            << "the start button was not found through the accessibility bus";
    }
    bool cancelTheQuitQuestion() {
        QTest::qWaitFor(
            [&] {
                return app.state() != QProcess::Running ||
                       kwin->press(pid(), QStringLiteral("继续专注"));
            },
            kWaitMs);
        return app.state() == QProcess::Running;
    }

    QProcess app;
};

TEST_P(CompositorTest, TheFloatingTimerStandsInForTheMinimisedWindowAndTheRoundEndIsNotified) {
    ASSERT_NO_FATAL_FAILURE(startRound());

    setMainMinimised(true);
    QJsonArray windows;
    EXPECT_TRUE(kwin->waitForWindows(
        pid(),
        [](const QJsonArray& w) {
            return has(w, kPanelTitle, [](const QJsonObject& o) {
                return !minimized(o) && o.value(QStringLiteral("keepAbove")).toBool() &&
                       o.value(QStringLiteral("onAllDesktops")).toBool() &&
                       o.value(QStringLiteral("skipTaskbar")).toBool();
            });
        },
        &windows))
        << "no floating timer above, on every desktop and off the task bar while minimised: "
        << QJsonDocument(windows).toJson().toStdString();

    setMainMinimised(false);
    EXPECT_TRUE(kwin->waitForWindows(pid(), [](const QJsonArray& w) {
        return !has(w, kPanelTitle);
    })) << "the floating timer stayed after the window came back";

    // Ended while minimised: the review waits, and the desktop is told.
    setMainMinimised(true);
    ASSERT_TRUE(
        kwin->waitForWindows(pid(), [](const QJsonArray& w) { return has(w, kPanelTitle); }));
    ASSERT_TRUE(kwin->press(pid(), QStringLiteral("结束")));
    ASSERT_TRUE(
        QTest::qWaitFor([&] { return kwin->press(pid(), QStringLiteral("结束并记录")); }, kWaitMs));
    ASSERT_TRUE(QTest::qWaitFor([&] { return !kwin->notifications.shown.empty(); }, kWaitMs))
        << "no notification while minimised";
    EXPECT_EQ(kwin->notifications.shown.back().summary, QStringLiteral("本轮专注已结束"));
}

TEST_P(CompositorTest, TheTrayPanelStaysOffTheTaskBarAndQuittingDuringARoundAsksFirst) {
    ASSERT_TRUE(QTest::qWaitFor([&] { return kwin->clickTrayItem(); }, kWaitMs))
        << "the app registered no tray item";
    // Off the task bar, in the corner where the desktop keeps its tray (no panel here: the
    // screen's), also once it grew.
    auto panelTop = [&](int below) {
        QJsonArray windows;
        int top = -1;
        const bool placed = kwin->waitForWindows(
            pid(),
            [&](const QJsonArray& w) {
                return has(w, kTrayPanelTitle, [&](const QJsonObject& o) {
                    top = o.value(QStringLiteral("y")).toInt();
                    return o.value(QStringLiteral("skipTaskbar")).toBool() && top < below &&
                           o.value(QStringLiteral("right")).toInt() > kScreen.width() - 16 &&
                           o.value(QStringLiteral("bottom")).toInt() > kScreen.height() - 16;
                });
            },
            &windows);
        EXPECT_TRUE(placed) << QJsonDocument(windows).toJson().toStdString();
        return top;
    };
    const int top = panelTop(kScreen.height());
    // A round started from the panel grows it, upward.
    ASSERT_TRUE(QTest::qWaitFor([&] { return kwin->press(pid(), QStringLiteral("开始 50 分钟")); },
                                kWaitMs));
    panelTop(top);
    ASSERT_TRUE(kwin->clickTrayItem());

    ASSERT_TRUE(
        QTest::qWaitFor([&] { return kwin->chooseTrayMenuEntry(QStringLiteral("退出")); }, kWaitMs))
        << "the app registered no tray item with a 退出 entry";
    // The abandon question holds the quit: its cancel choice is there to press.
    EXPECT_TRUE(cancelTheQuitQuestion()) << "退出 did not ask: " << appLog();

    // Keys reach an X11 client through XWayland; a Wayland client needs KWin's fake input.
    if (GetParam() != std::string("xcb"))
        return;
    ASSERT_TRUE(kwin->typeOnX11(QStringLiteral("ctrl+q")));
    EXPECT_TRUE(cancelTheQuitQuestion()) << "Ctrl+Q did not ask: " << appLog();
}

TEST_P(CompositorTest, ASecondLaunchBringsTheMinimisedWindowBack) {
    setMainMinimised(true);
    ASSERT_TRUE(kwin->waitForWindows(
        pid(), [](const QJsonArray& w) { return has(w, kMainTitle, minimized); }));
    QProcessEnvironment env = kwin->appEnvironment(QString::fromLatin1(GetParam()));
    if (env.value(QStringLiteral("QT_QPA_PLATFORM")) == QLatin1String("wayland")) {
        // On Wayland only a token from the compositor lets a window take the focus: asked
        // for the way a launcher asks, and handed to the second launch.
#ifdef QUILL_TOKEN_TOOL
        QProcess tool;
        tool.setProcessEnvironment(env);
        tool.start(QStringLiteral(QUILL_TOKEN_TOOL), {QStringLiteral(QUILL_APP_ID)});
        ASSERT_TRUE(tool.waitForFinished(kWaitMs) && tool.exitCode() == 0);
        env.insert(QStringLiteral("XDG_ACTIVATION_TOKEN"),
                   QString::fromLatin1(tool.readAllStandardOutput().trimmed()));
#else
        GTEST_SKIP() << "built without the Wayland client library to ask for a token";
#endif
    }
    QProcess second;
    second.setProcessEnvironment(env);
    second.start(QStringLiteral(QUILL_APP_BINARY), {});
    ASSERT_TRUE(second.waitForFinished(kWaitMs)) << "the second launch did not hand over and leave";
    EXPECT_TRUE(kwin->waitForWindows(pid(), [](const QJsonArray& w) {
        return has(w, kMainTitle, [](const QJsonObject& o) {
            return !minimized(o) && o.value(QStringLiteral("active")).toBool();
        });
    }));
}

INSTANTIATE_TEST_SUITE_P(Platforms, CompositorTest, ::testing::Values("wayland", "xcb"),
                         [](const auto& info) { return std::string(info.param); });

} // namespace

#include "CompositorTest.moc"
