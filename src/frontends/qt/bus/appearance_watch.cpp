#include "frontends/qt/bus/appearance_watch.h"

#include <cstdint>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace {

constexpr const char* kPortal = "org.freedesktop.portal.Desktop";
constexpr const char* kPortalPath = "/org/freedesktop/portal/desktop";
constexpr const char* kSettings = "org.freedesktop.portal.Settings";
constexpr const char* kAppearance = "org.freedesktop.appearance";
constexpr const char* kAccessibility = "org.gnome.desktop.a11y.interface";

/// Each changes what is known of the appearance, if the portal knows an answer.
struct Question {
  const char* group;
  const char* key;
  void (*apply)(Appearance& appearance, std::uint32_t answer);
};

void applyColors(Appearance& appearance, std::uint32_t answer) {
  if (answer == 1) appearance.colors = Appearance::Colors::dark;
  if (answer == 2) appearance.colors = Appearance::Colors::light;
}

void applyContrast(Appearance& appearance, std::uint32_t answer) {
  if (answer == 1) appearance.highContrast = true;
}

/// Older portals know the contrast by GNOME's own setting alone.
constexpr Question kQuestions[] = {
    {kAppearance, "color-scheme", &applyColors},
    {kAppearance, "contrast", &applyContrast},
    {kAccessibility, "high-contrast", &applyContrast},
};

/// The number or truth value in the answer, which portals wrap into one variant or two.
std::optional<std::uint32_t> wrappedNumber(sd_bus_message* reply) {
  constexpr int kMostWraps = 2;
  for (int wrap = 0; wrap < kMostWraps; ++wrap) {
    const char* contents = nullptr;
    if (sd_bus_message_peek_type(reply, nullptr, &contents) <= 0 || contents == nullptr) break;
    const std::string_view type = contents;
    if (type == "u") {
      std::uint32_t number = 0;
      if (sd_bus_message_read(reply, "v", "u", &number) < 0) break;
      return number;
    }
    if (type == "b") {
      int truth = 0;
      if (sd_bus_message_read(reply, "v", "b", &truth) < 0) break;
      return truth != 0 ? 1 : 0;
    }
    if (sd_bus_message_enter_container(reply, 'v', contents) <= 0) break;
  }
  return std::nullopt;
}

}  // namespace

AppearanceWatch::AppearanceWatch(sd_bus* bus) : bus_(bus) {
  // In order: the rules are in force before the questions are answered.
  watch(appearanceMatch_, kAppearance);
  watch(accessibilityMatch_, kAccessibility);
  askFromStart();
}

void AppearanceWatch::watch(BusSlot& slot, const char* group) {
  const std::string rule = std::string("type='signal',sender='") + kPortal + "',path='" +
                           kPortalPath + "',interface='" + kSettings +
                           "',member='SettingChanged',arg0='" + group + "'";
  sd_bus_slot* raw = nullptr;
  if (sd_bus_add_match_async(bus_, &raw, rule.c_str(), &AppearanceWatch::settingChanged, nullptr,
                             this) >= 0) {
    slot.reset(raw);
  }
}

void AppearanceWatch::askFromStart() {
  heard_ = {};
  next_ = 0;
  ask();
}

void AppearanceWatch::ask() {
  const Question& question = kQuestions[next_];
  sd_bus_slot* raw = nullptr;
  const int result = sd_bus_call_method_async(bus_, &raw, kPortal, kPortalPath, kSettings, "Read",
                                              &AppearanceWatch::answered, this, "ss",
                                              question.group, question.key);
  if (result >= 0) question_.reset(raw);
}

int AppearanceWatch::answered(sd_bus_message* reply, void* self, sd_bus_error*) {
  auto& watch = *static_cast<AppearanceWatch*>(self);
  if (sd_bus_message_is_method_error(reply, nullptr) == 0) {
    if (const auto answer = wrappedNumber(reply))
      kQuestions[watch.next_].apply(watch.heard_, *answer);
  }
  watch.question_.reset();
  const bool portalIsThere =
      sd_bus_message_is_method_error(reply, SD_BUS_ERROR_SERVICE_UNKNOWN) == 0;
  if (++watch.next_ < std::size(kQuestions) && portalIsThere) {
    watch.ask();
  } else {
    watch.settle();
  }
  return 0;
}

void AppearanceWatch::settle() {
  const Appearance heard = heard_;
  if (std::exchange(askAgain_, false)) askFromStart();
  if (heard == appearance_) return;
  appearance_ = heard;
  Q_EMIT changed();
}

/// Whoever sent the signal, the portal itself is asked; once at a time, however many come.
int AppearanceWatch::settingChanged(sd_bus_message*, void* self, sd_bus_error*) {
  auto& watch = *static_cast<AppearanceWatch*>(self);
  if (watch.question_ != nullptr) {
    watch.askAgain_ = true;
  } else {
    watch.askFromStart();
  }
  return 0;
}
