// What others choose is bounded in size, and each of its characters, wherever it is shown.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>

#include "fakes/row_name.h"
#include "fakes/scripted_platform.h"
#include "text/display_line.h"
#include "text/unicode.h"
#include "ui/alerts.h"
#include "ui/memory_warning_text.h"
#include "ui/menu_construction.h"
#include "ui/status_tool_tip.h"
#include "ui/strip_text.h"

namespace {

constexpr std::size_t kOwnWords = 512;  // the program's own, around those of others

std::string times(std::size_t count, std::string_view text) {
  std::string result;
  for (std::size_t i = 0; i < count; ++i) result += text;
  return result;
}

/// Letters of 60,000 marks, and many of them.
std::string dearText() {
  return times(3, "e" + times(60'000, "\u0301")) + times(100'000, "x");
}

VordaProcess process(bool isProtected) {
  return {.pid = 7,
          .displayName = dearText(),
          .product = dearText(),
          .memMB = 2048,
          .commandLine = dearText(),
          .matchedAgents = {dearText()},
          .isProtected = isProtected,
          .ownerName = dearText()};
}

VordaLaunchAgent launchAgent() {
  return {.label = dearText(), .plistPath = "/units/a.service"};
}

std::string all(const MenuItem& item) {
  std::string text = item.title + item.toolTip;
  for (const MenuItem& entry : item.submenu) text += all(entry);
  return text;
}

std::string all(const Alert& alert) {
  return alert.messageText + alert.informativeText;
}

std::string processRow(bool isProtected) {
  return all(MenuConstruction::processItem(process(isProtected)));
}

std::string largest() {
  SystemMemory::Snapshot memory;
  memory.totalGB = 16;
  const Menu menu = MenuConstruction::build({{process(false)}, {}, memory});
  const auto item = std::find_if(menu.items.begin(), menu.items.end(), [](const MenuItem& one) {
    return one.title.starts_with("Largest");
  });
  return item == menu.items.end() ? "" : item->title;
}

std::string description() {
  MemoryPressureView strip;
  strip.segments = {{.fraction = 0.5, .label = dearText()}};
  return stripDescription(strip);
}

struct Place {
  const char* name;
  std::string (*shown)();
  std::size_t names;  ///< that stand in it
};

std::string warned() {
  const MemoryCulprit culprit{{7, 70}, dearText(), 9216, 4096, 40};
  return memoryWarning({MemoryTrouble::runsOut, culprit}, {}).text;
}

class BoundedText : public testing::TestWithParam<Place> {};

TEST_P(BoundedText, HasNoDearCharacterAndNoEnd) {
  resetMachine();
  const std::string shown = GetParam().shown();
  EXPECT_NE(shown.find("e\u0301"), std::string::npos) << "nothing of it is shown";
  EXPECT_LE(shown.size(), GetParam().names * text::kMostNameBytes + kOwnWords);
  for (std::string_view rest = shown; !rest.empty();) {
    const std::size_t length = text::firstCharacters(rest, 1).size();
    ASSERT_LE(length, text::kMostCharacterBytes);
    rest.remove_prefix(length);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Table, BoundedText,
    testing::Values(
        // title; tool tip: name, product, owner; submenu: product, launch agent
        Place{"ProcessRow", [] { return processRow(false); }, 6},
        Place{"ProtectedProcessRow", [] { return processRow(true); }, 8},
        Place{"AgentRow", [] { return all(MenuConstruction::launchAgentItem(launchAgent())); }, 1},
        Place{"Largest", &largest, 1}, Place{"StripDescription", &description, 1},
        Place{"StatusToolTip", [] { return StatusToolTip::of({process(false)}, 5, {}); }, 1},
        Place{"MemoryWarning", &warned, 1},
        Place{"Details", [] { return all(Alerts::details(process(false))); }, 4},
        Place{"ForceQuit", [] { return all(Alerts::forceQuit(process(false))); }, 1},
        Place{"Protected", [] { return Alerts::protectedMessage(process(true)); }, 2},
        Place{"Unload", [] { return all(Alerts::unload(launchAgent())); }, 1},
        Place{"Notice",
              [] { return all(Alerts::notice("Failed", "Failed to load " + dearText())); },
              text::kMostTextBytes / text::kMostNameBytes}),
    rowName<Place>);

}  // namespace
