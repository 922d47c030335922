#include "frontends/qt/bus/color_scheme_watch.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace {

constexpr const char* kPortal = "org.freedesktop.portal.Desktop";
constexpr const char* kPortalPath = "/org/freedesktop/portal/desktop";
constexpr const char* kSettings = "org.freedesktop.portal.Settings";
constexpr const char* kAppearance = "org.freedesktop.appearance";
constexpr const char* kColorScheme = "color-scheme";

/// The number in the answer, which portals wrap into one variant or two.
std::uint32_t wrappedNumber(sd_bus_message* reply) {
  constexpr int kMostWraps = 2;
  std::uint32_t number = 0;
  for (int wrap = 0; wrap < kMostWraps; ++wrap) {
    const char* contents = nullptr;
    if (sd_bus_message_peek_type(reply, nullptr, &contents) <= 0 || contents == nullptr) break;
    if (std::string_view(contents) == "u") {
      sd_bus_message_read(reply, "v", "u", &number);
      break;
    }
    if (sd_bus_message_enter_container(reply, 'v', contents) <= 0) break;
  }
  return number;
}

ColorScheme schemeOf(std::uint32_t number) {
  if (number == 1) return ColorScheme::dark;
  return number == 2 ? ColorScheme::light : ColorScheme::noPreference;
}

}  // namespace

ColorSchemeWatch::ColorSchemeWatch(sd_bus* bus) : bus_(bus) {
  const std::string rule = std::string("type='signal',sender='") + kPortal + "',path='" +
                           kPortalPath + "',interface='" + kSettings +
                           "',member='SettingChanged',arg0='" + kAppearance + "'";
  sd_bus_slot* raw = nullptr;
  // In order: the rule is in force before the question is answered.
  if (sd_bus_add_match_async(bus_, &raw, rule.c_str(), &ColorSchemeWatch::settingChanged, nullptr,
                             this) >= 0) {
    match_.reset(raw);
  }
  ask();
}

void ColorSchemeWatch::ask() {
  sd_bus_slot* raw = nullptr;
  const int result =
      sd_bus_call_method_async(bus_, &raw, kPortal, kPortalPath, kSettings, "Read",
                               &ColorSchemeWatch::answered, this, "ss", kAppearance, kColorScheme);
  if (result >= 0) question_.reset(raw);
}

int ColorSchemeWatch::answered(sd_bus_message* reply, void* self, sd_bus_error*) {
  auto& watch = *static_cast<ColorSchemeWatch*>(self);
  const bool isError = sd_bus_message_is_method_error(reply, nullptr) != 0;
  const ColorScheme scheme = isError ? ColorScheme::noPreference : schemeOf(wrappedNumber(reply));
  watch.question_.reset();
  if (std::exchange(watch.askAgain_, false)) watch.ask();
  if (std::exchange(watch.scheme_, scheme) != scheme) Q_EMIT watch.changed();
  return 0;
}

/// Whoever sent the signal, the portal itself is asked; once at a time, however many come.
int ColorSchemeWatch::settingChanged(sd_bus_message*, void* self, sd_bus_error*) {
  auto& watch = *static_cast<ColorSchemeWatch*>(self);
  if (watch.question_ != nullptr) {
    watch.askAgain_ = true;
  } else {
    watch.ask();
  }
  return 0;
}
