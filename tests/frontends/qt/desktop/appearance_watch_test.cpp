// How a desktop's portal says that the user wants programs to look, on a real bus.
#include "frontends/qt/bus/appearance_watch.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <functional>
#include <memory>
#include <optional>

#include "frontends/qt/desktop/tray_host.h"
#include "tools/background_program.h"
#include "tools/eventually.h"
#include "tools/temp_folder.h"

namespace {

constexpr const char* kPortal = "org.freedesktop.portal.Desktop";
constexpr const char* kPortalPath = "/org/freedesktop/portal/desktop";
constexpr const char* kSettings = "org.freedesktop.portal.Settings";

/// A desktop's portal, in the hands of a test.
struct Portal {
  explicit Portal(const std::string& address) : bus(connectedBus(address)) {
    sd_bus_slot* raw = nullptr;
    EXPECT_GE(sd_bus_add_object_vtable(bus.get(), &raw, kPortalPath, kSettings, kTable, this), 0);
    object.reset(raw);
    EXPECT_GE(sd_bus_request_name(bus.get(), kPortal, 0), 0);
  }

  static int read(sd_bus_message* call, void* data, sd_bus_error*) {
    auto& portal = *static_cast<Portal*>(data);
    ++portal.questions;
    const char* group = nullptr;
    const char* key = nullptr;
    sd_bus_message_read(call, "ss", &group, &key);
    const std::string name = std::string(group) + "/" + key;
    if (name == "org.freedesktop.appearance/contrast" && portal.contrast) {
      return sd_bus_reply_method_return(call, "v", "v", "u", *portal.contrast);
    }
    if (name == "org.gnome.desktop.a11y.interface/high-contrast" && portal.gnomesContrast) {
      return sd_bus_reply_method_return(call, "v", "v", "b", *portal.gnomesContrast);
    }
    if (name != "org.freedesktop.appearance/color-scheme") return -ENOENT;
    if (portal.saysNonsense) return sd_bus_reply_method_return(call, "v", "v", "s", "dark");
    return portal.wrapsTwice ? sd_bus_reply_method_return(call, "v", "v", "u", portal.colors)
                             : sd_bus_reply_method_return(call, "v", "u", portal.colors);
  }

  void change(std::uint32_t to) {
    colors = to;
    say("org.freedesktop.appearance", "color-scheme");
  }
  void say(const char* group, const char* key) {
    sd_bus_emit_signal(bus.get(), kPortalPath, kSettings, "SettingChanged", "ssv", group, key, "u",
                       0);
  }

  static constexpr sd_bus_vtable kTable[] = {
      SD_BUS_VTABLE_START(0),
      SD_BUS_METHOD("Read", "ss", "v", &read, SD_BUS_VTABLE_UNPRIVILEGED),
      SD_BUS_SIGNAL("SettingChanged", "ssv", 0),
      SD_BUS_VTABLE_END,
  };
  BusPtr bus;
  BusSlot object;
  std::uint32_t colors = 0;
  std::optional<std::uint32_t> contrast;
  std::optional<int> gnomesContrast;
  bool wrapsTwice = true;
  bool saysNonsense = false;
  int questions = 0;
};

class WatchedAppearance : public testing::Test {
 protected:
  void SetUp() override {
    if (!bus_.started()) GTEST_SKIP() << "dbus-daemon is not installed";
    address_ = bus_.firstLine();
    asking_ = connectedBus(address_);
  }

  bool eventually(const std::function<bool()>& done) {
    return ::eventually(done, [this] {
      while (sd_bus_process(asking_.get(), nullptr) > 0) {
      }
      if (portal_) {
        while (sd_bus_process(portal_->bus.get(), nullptr) > 0) {
        }
      }
      sd_bus_wait(asking_.get(), 1000);
    });
  }

  TempFolder folder_;
  BackgroundProgram bus_{{"dbus-daemon", "--session", "--nofork", "--nopidfile",
                          "--print-address=1",
                          "--address=unix:path=" + (folder_ / "bus").string()}};
  std::string address_;
  BusPtr asking_;
  std::unique_ptr<Portal> portal_;
};

TEST_F(WatchedAppearance, ColorsAreAskedForAndFollowed) {
  using Colors = Appearance::Colors;
  portal_ = std::make_unique<Portal>(address_);
  portal_->colors = 1;
  const AppearanceWatch watch(asking_.get());
  EXPECT_EQ(watch.appearance(), Appearance());
  const auto become = [&](Colors colors) {
    return eventually([&] { return watch.appearance().colors == colors; });
  };
  EXPECT_TRUE(become(Colors::dark));
  portal_->change(2);
  EXPECT_TRUE(become(Colors::light));
  portal_->wrapsTwice = false;
  portal_->change(1);
  EXPECT_TRUE(become(Colors::dark));
  portal_->saysNonsense = true;
  portal_->change(1);
  EXPECT_TRUE(become(Colors::noPreference));
}

TEST_F(WatchedAppearance, ContrastIsAskedForAndFollowed) {
  portal_ = std::make_unique<Portal>(address_);
  portal_->contrast = 1;
  portal_->colors = 1;
  const AppearanceWatch watch(asking_.get());
  const auto become = [&](const Appearance& appearance) {
    return eventually([&] { return watch.appearance() == appearance; });
  };
  EXPECT_TRUE(become({Appearance::Colors::dark, true}));
  portal_->contrast = 0;
  portal_->say("org.freedesktop.appearance", "contrast");
  EXPECT_TRUE(become({Appearance::Colors::dark, false}));
  portal_->contrast.reset();
  portal_->gnomesContrast = 1;
  portal_->say("org.gnome.desktop.a11y.interface", "high-contrast");
  EXPECT_TRUE(become({Appearance::Colors::dark, true}));
}

}  // namespace
