// The floating timer on a real X server with a real window manager: a virtual X server and
// openbox are started for this executable alone. Skipped when either cannot be started.
#include "UiHarness.h"
#include "ui/shell/FloatingTimerController.h"

#include <QApplication>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QtGui/qguiapplication_platform.h>
#include <gtest/gtest.h>
#include <xcb/xcb.h>

#include <csignal>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <sys/prctl.h>

using namespace quill;
using namespace quill::test;

namespace {

/// Xvfb on a free display and openbox managing it, both ended with the executable.
struct VirtualDesktop {
    QProcess server, windowManager;
    QTemporaryDir home;
    QString problem;

    bool start() {
        // A crashed test must not leave its X server and window manager behind.
        for (QProcess* p : {&server, &windowManager})
            p->setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGTERM); });
        // Xvfb prints the display number it picked once it accepts connections.
        server.start(QStringLiteral("Xvfb"),
                     {"-displayfd", "1", "-screen", "0", "1280x800x24", "-nolisten", "tcp"});
        if (!server.waitForStarted(5000))
            return fail("Xvfb could not be started");
        QByteArray number;
        while (!number.contains('\n') && server.waitForReadyRead(10000))
            number += server.readAllStandardOutput();
        if (!number.contains('\n'))
            return fail("Xvfb reported no display");
        const QByteArray display = ":" + number.trimmed();
        qputenv("DISPLAY", display);

        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("HOME"), home.path());
        env.insert(QStringLiteral("XDG_CACHE_HOME"), home.path());
        windowManager.setProcessEnvironment(env);
        // openbox runs the startup command once it manages the screen.
        windowManager.start(QStringLiteral("openbox"),
                            {"--sm-disable", "--startup", "echo quillmere-wm-ready"});
        if (!windowManager.waitForStarted(5000))
            return fail("openbox could not be started");
        QByteArray out;
        while (!out.contains("quillmere-wm-ready") && windowManager.waitForReadyRead(10000))
            out += windowManager.readAllStandardOutput();
        if (!out.contains("quillmere-wm-ready"))
            return fail("openbox did not start managing the screen");
        return true;
    }
    bool fail(const char* why) {
        problem = QString::fromLatin1(why);
        return false;
    }
    ~VirtualDesktop() {
        for (QProcess* p : {&windowManager, &server}) {
            p->terminate();
            if (!p->waitForFinished(3000))
                p->kill();
            p->waitForFinished(1000);
        }
    }
};

VirtualDesktop* desktop = nullptr;
bool desktopReady = false;

xcb_connection_t* x() {
    return qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
}

xcb_atom_t atom(const char* name) {
    auto* reply = xcb_intern_atom_reply(x(), xcb_intern_atom(x(), 0, strlen(name), name), nullptr);
    const xcb_atom_t a = reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
    std::free(reply);
    return a;
}

/// Sends what a taskbar or xdotool sends the window manager.
void askWindowManager(xcb_window_t window, const char* type, uint32_t first) {
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = atom(type);
    event.data.data32[0] = first;
    event.data.data32[1] = XCB_CURRENT_TIME;
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(x())).data->root;
    xcb_send_event(x(), 0, root,
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&event));
    xcb_flush(x());
}

bool viewable(xcb_window_t window) {
    auto* reply =
        xcb_get_window_attributes_reply(x(), xcb_get_window_attributes(x(), window), nullptr);
    const bool mapped = reply && reply->map_state == XCB_MAP_STATE_VIEWABLE;
    std::free(reply);
    return mapped;
}

QList<uint32_t> property32(xcb_window_t window, const char* name, xcb_atom_t type) {
    auto* reply = xcb_get_property_reply(
        x(), xcb_get_property(x(), 0, window, atom(name), type, 0, 64), nullptr);
    QList<uint32_t> values;
    if (reply && reply->format == 32) {
        const auto* data = static_cast<const uint32_t*>(xcb_get_property_value(reply));
        for (int i = 0; i < xcb_get_property_value_length(reply) / 4; ++i)
            values << data[i];
    }
    std::free(reply);
    return values;
}

class FloatingTimerX11Test : public ::testing::Test {
protected:
    void SetUp() override {
        if (!desktopReady)
            GTEST_SKIP() << "no virtual X desktop: " << desktop->problem.toStdString();
        ui = std::make_unique<UiHarness>();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(ui->window()));
        main = xcb_window_t(ui->window()->winId());
    }
    FloatingTimerController* controller() {
        return ui->window()->findChild<FloatingTimerController*>("floatingTimerController");
    }
    bool minimised() { return ui->window()->windowStates() & Qt::WindowMinimized; }
    void minimiseThroughWindowManager() {
        askWindowManager(main, "WM_CHANGE_STATE", 3 /* IconicState */);
        ASSERT_TRUE(QTest::qWaitFor([&] { return minimised() && !viewable(main); }));
    }
    /// Waits for the panel to be mapped and returns its X window.
    xcb_window_t panelShown() {
        QQuickWindow* panel = nullptr;
        const bool shown = QTest::qWaitFor([&] {
            panel = controller()->panel();
            return panel && viewable(xcb_window_t(panel->winId()));
        });
        EXPECT_TRUE(shown);
        return shown ? xcb_window_t(panel->winId()) : xcb_window_t(XCB_WINDOW_NONE);
    }
    void expectGone(xcb_window_t panel) {
        EXPECT_TRUE(QTest::qWaitFor([&] { return !controller()->panel() && !viewable(panel); }));
    }

    std::unique_ptr<UiHarness> ui;
    xcb_window_t main = XCB_WINDOW_NONE;
};

TEST_F(FloatingTimerX11Test, MinimisingDuringARoundMapsThePanelOnEveryWorkspaceAbove) {
    ui->store().startSession();
    minimiseThroughWindowManager();
    const xcb_window_t panel = panelShown();
    ASSERT_NE(panel, XCB_WINDOW_NONE);

    // What openbox made of the hints: kept above, on all desktops, off the taskbar (it has
    // no sticky state; all desktops is its desktop number 0xFFFFFFFF).
    const QList<uint32_t> states = property32(panel, "_NET_WM_STATE", XCB_ATOM_ATOM);
    EXPECT_TRUE(states.contains(atom("_NET_WM_STATE_ABOVE")));
    EXPECT_TRUE(states.contains(atom("_NET_WM_STATE_SKIP_TASKBAR")));
    EXPECT_EQ(property32(panel, "_NET_WM_DESKTOP", XCB_ATOM_CARDINAL), QList<uint32_t>{0xFFFFFFFF});

    // The window manager brings the main window back (a taskbar click): the panel goes.
    askWindowManager(main, "_NET_ACTIVE_WINDOW", 2 /* pager */);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !minimised() && viewable(main); }));
    expectGone(panel);
}

TEST_F(FloatingTimerX11Test, EndingTheRoundOrTheRestoreButtonUnmapsIt) {
    ui->store().startSession();
    minimiseThroughWindowManager();
    xcb_window_t panel = panelShown();
    ui->store().abandonSession();
    expectGone(panel);
    EXPECT_TRUE(minimised()); // the main window stays where the user put it

    ui->store().startSession();
    panel = panelShown();
    ui->click("floatingTimer.restore", controller()->panel());
    ASSERT_TRUE(QTest::qWaitFor([&] { return !minimised() && viewable(main); }));
    expectGone(panel);
}

} // namespace

int main(int argc, char** argv) {
    qputenv("TZ", "Asia/Shanghai");
    tzset();
    VirtualDesktop virtualDesktop;
    desktop = &virtualDesktop;
    desktopReady = virtualDesktop.start();
    qputenv("QT_QPA_PLATFORM", desktopReady ? "xcb" : "offscreen");
    QApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
