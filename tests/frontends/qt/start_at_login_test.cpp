#include "frontends/qt/start_at_login.h"

#include <gtest/gtest.h>

#include "fakes/row_name.h"

namespace {

struct DesktopRow {
  const char* name;
  const char* desktops;
  const char* hint;
};

class StartAtLogin : public testing::TestWithParam<DesktopRow> {};

TEST_P(StartAtLogin, IsSaidInTheDesktopsWords) {
  EXPECT_EQ(startAtLoginHint(GetParam().desktops),
            "To start it at login: " + std::string(GetParam().hint) + ".");
}

constexpr const char* kByHand = "copy vorda.desktop to ~/.config/autostart";

INSTANTIATE_TEST_SUITE_P(
    Table, StartAtLogin,
    testing::Values(DesktopRow{"Gnome", "GNOME", "Tweaks, Startup Applications"},
                    DesktopRow{"UbuntusGnome", "ubuntu:GNOME", "Tweaks, Startup Applications"},
                    DesktopRow{"Plasma", "KDE", "System Settings, Autostart"},
                    DesktopRow{"Xfce", "XFCE", "Session and Startup, Application Autostart"},
                    DesktopRow{"Mate", "MATE", "Control Center, Startup Applications"},
                    DesktopRow{"Cinnamon", "X-Cinnamon", "System Settings, Startup Applications"},
                    DesktopRow{"Budgie", "Budgie:GNOME", "Budgie Desktop Settings, Autostart"},
                    DesktopRow{"Lxqt", "LXQt", "Session Settings, Autostart"},
                    DesktopRow{"Unknown", "sway", kByHand}, DesktopRow{"None", "", kByHand},
                    DesktopRow{"Colons", "::", kByHand}),
    rowName<DesktopRow>);

}  // namespace
