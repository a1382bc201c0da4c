#include "X11WindowHints.h"

#include <QGuiApplication>
#include <QWindow>

#if defined(Q_OS_UNIX) && !defined(Q_OS_MACOS)
#include <QtGui/qguiapplication_platform.h>
#include <xcb/xcb.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace quill::x11 {

namespace {

xcb_connection_t* connection() {
    if (!isX11())
        return nullptr;
    auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 ? x11->connection() : nullptr;
}

xcb_atom_t atom(xcb_connection_t* c, const char* name) {
    const auto cookie = xcb_intern_atom(c, 0, uint16_t(strlen(name)), name);
    xcb_intern_atom_reply_t* reply = xcb_intern_atom_reply(c, cookie, nullptr);
    if (!reply)
        return XCB_ATOM_NONE;
    const xcb_atom_t a = reply->atom;
    std::free(reply);
    return a;
}

xcb_window_t rootOf(xcb_connection_t* c) {
    return xcb_setup_roots_iterator(xcb_get_setup(c)).data->root;
}

void sendToRoot(xcb_connection_t* c, xcb_window_t window, xcb_atom_t type,
                std::initializer_list<uint32_t> data) {
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = type;
    int i = 0;
    for (uint32_t d : data)
        event.data.data32[i++] = d;
    xcb_send_event(c, 0, rootOf(c),
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&event));
}

} // namespace

bool isX11() {
    return QGuiApplication::platformName() == QLatin1String("xcb");
}

void showOnAllWorkspaces(QWindow* window) {
    xcb_connection_t* c = connection();
    if (!c || !window)
        return;
    const auto id = xcb_window_t(window->winId());
    const xcb_atom_t desktop = atom(c, "_NET_WM_DESKTOP");
    const xcb_atom_t state = atom(c, "_NET_WM_STATE");
    const std::vector<xcb_atom_t> states = {atom(c, "_NET_WM_STATE_STICKY"),
                                            atom(c, "_NET_WM_STATE_SKIP_TASKBAR"),
                                            atom(c, "_NET_WM_STATE_SKIP_PAGER")};
    constexpr uint32_t allDesktops = 0xFFFFFFFF;
    if (!window->isVisible()) {
        // Read when the window manager takes the window on; Qt adds its own states to these.
        xcb_change_property(c, XCB_PROP_MODE_REPLACE, id, desktop, XCB_ATOM_CARDINAL, 32, 1,
                            &allDesktops);
        xcb_change_property(c, XCB_PROP_MODE_APPEND, id, state, XCB_ATOM_ATOM, 32,
                            uint32_t(states.size()), states.data());
    } else {
        constexpr uint32_t add = 1, normalSource = 1;
        sendToRoot(c, id, desktop, {allDesktops, normalSource});
        sendToRoot(c, id, state, {add, states[0], states[1], normalSource});
        sendToRoot(c, id, state, {add, states[2], 0, normalSource});
    }
    xcb_flush(c);
}

void activateWithStartupId(QWindow* window, const QByteArray& startupId) {
    xcb_connection_t* c = connection();
    if (!c || !window || startupId.isEmpty())
        return;
    xcb_change_property(c, XCB_PROP_MODE_REPLACE, xcb_window_t(window->winId()),
                        atom(c, "_NET_STARTUP_ID"), atom(c, "UTF8_STRING"), 8,
                        uint32_t(startupId.size()), startupId.constData());
    // The startup-notification "remove" message, 20 bytes per client message, ends the
    // launcher's busy feedback for the launch that only came to hand its id over.
    QByteArray message = "remove: ID=\"";
    for (char ch : startupId) {
        if (ch == '"' || ch == '\\')
            message += '\\';
        message += ch;
    }
    message += "\"";
    message += '\0';
    const xcb_atom_t begin = atom(c, "_NET_STARTUP_INFO_BEGIN");
    const xcb_atom_t more = atom(c, "_NET_STARTUP_INFO");
    const xcb_window_t root = rootOf(c);
    for (qsizetype at = 0; at < message.size(); at += 20) {
        xcb_client_message_event_t event{};
        event.response_type = XCB_CLIENT_MESSAGE;
        event.format = 8;
        event.window = xcb_window_t(window->winId());
        event.type = at == 0 ? begin : more;
        std::memcpy(event.data.data8, message.constData() + at,
                    size_t(std::min<qsizetype>(20, message.size() - at)));
        xcb_send_event(c, 0, root, XCB_EVENT_MASK_PROPERTY_CHANGE,
                       reinterpret_cast<const char*>(&event));
    }
    xcb_flush(c);
}

void markAsUtility(QWindow* window) {
    xcb_connection_t* c = connection();
    if (!c || !window)
        return;
    const xcb_atom_t utility = atom(c, "_NET_WM_WINDOW_TYPE_UTILITY");
    xcb_change_property(c, XCB_PROP_MODE_REPLACE, xcb_window_t(window->winId()),
                        atom(c, "_NET_WM_WINDOW_TYPE"), XCB_ATOM_ATOM, 32, 1, &utility);
    xcb_flush(c);
}

namespace {
bool selectionOwned(xcb_connection_t* c, const char* prefix) {
    const QByteArray name = prefix + QByteArray::number(0);
    const auto cookie = xcb_get_selection_owner(c, atom(c, name.constData()));
    xcb_get_selection_owner_reply_t* reply = xcb_get_selection_owner_reply(c, cookie, nullptr);
    const bool owned = reply && reply->owner != XCB_WINDOW_NONE;
    std::free(reply);
    return owned;
}
} // namespace

bool compositorRunning() {
    xcb_connection_t* c = connection();
    if (!c)
        return !isX11() && QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
    return selectionOwned(c, "_NET_WM_CM_S");
}

bool systemTrayRunning() {
    xcb_connection_t* c = connection();
    return c && selectionOwned(c, "_NET_SYSTEM_TRAY_S");
}

} // namespace quill::x11

#else

namespace quill::x11 {
bool isX11() {
    return false;
}
void showOnAllWorkspaces(QWindow*) {}
void activateWithStartupId(QWindow*, const QByteArray&) {}
void markAsUtility(QWindow*) {}
bool compositorRunning() {
    return true;
}
bool systemTrayRunning() {
    return false;
}
} // namespace quill::x11

#endif
