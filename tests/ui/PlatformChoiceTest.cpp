#include "ui/shell/PlatformChoice.h"

#include <gtest/gtest.h>

using namespace quill;

namespace {

TEST(PlatformChoiceTest, GnomeGetsXWaylandEverythingElseWhatQtPicks) {
    EXPECT_EQ(preferredPlatform("", "GNOME", "wayland-0", ":0"), "xcb");
    EXPECT_EQ(preferredPlatform("", "ubuntu:GNOME", "wayland-0", ":0"), "xcb");
    EXPECT_EQ(preferredPlatform("", "KDE", "wayland-0", ":0"), "") << "Plasma: native Wayland";
    EXPECT_EQ(preferredPlatform("wayland", "GNOME", "wayland-0", ":0"), "") << "asked for";
    EXPECT_EQ(preferredPlatform("", "GNOME", "wayland-0", ""), "") << "no XWayland";
    EXPECT_EQ(preferredPlatform("", "GNOME", "", ":0"), "") << "an X11 session";
}

} // namespace
