// Asks the compositor for an xdg-activation token, as a launcher does before it starts an
// app, and prints it. The compositor test hands it to a second launch of the app.
#include "xdg-activation-v1-client-protocol.h"

#include <cstdio>
#include <cstring>
#include <string>
#include <wayland-client.h>

namespace {

xdg_activation_v1* activation = nullptr;
std::string token;
bool done = false;

void announce(void*, wl_registry* registry, uint32_t name, const char* interface, uint32_t) {
    if (std::strcmp(interface, xdg_activation_v1_interface.name) == 0)
        activation = static_cast<xdg_activation_v1*>(
            wl_registry_bind(registry, name, &xdg_activation_v1_interface, 1));
}
void withdraw(void*, wl_registry*, uint32_t) {}
const wl_registry_listener registryListener{announce, withdraw};

void granted(void*, xdg_activation_token_v1*, const char* value) {
    token = value;
    done = true;
}
const xdg_activation_token_v1_listener tokenListener{granted};

} // namespace

int main(int argc, char** argv) {
    wl_display* display = wl_display_connect(nullptr);
    if (!display)
        return 1;
    wl_registry_add_listener(wl_display_get_registry(display), &registryListener, nullptr);
    wl_display_roundtrip(display);
    if (!activation)
        return 2;
    xdg_activation_token_v1* request = xdg_activation_v1_get_activation_token(activation);
    xdg_activation_token_v1_add_listener(request, &tokenListener, nullptr);
    if (argc > 1)
        xdg_activation_token_v1_set_app_id(request, argv[1]);
    xdg_activation_token_v1_commit(request);
    while (!done && wl_display_dispatch(display) != -1) {
    }
    std::puts(token.c_str());
    wl_display_disconnect(display);
    return done ? 0 : 3;
}
