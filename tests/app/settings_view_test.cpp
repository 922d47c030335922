#include "app/settings_view.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/branding.h"
#include "fakes/scripted_platform.h"

namespace {

using SettingsView::Font;
using SettingsView::Foreground;
using SettingsView::Line;

std::vector<Line> linesWith(const std::string& statusArea) {
  return {
      {"Vorda", Font::title2Bold, Foreground::primary, 0},
      {"See everything. Control everything.", Font::body, Foreground::secondary, 0},
      {"Developed by Halvek", Font::caption, Foreground::secondary, 4},
      {Branding::makerLine(), Font::caption2, Foreground::tertiary, 0},
      {"Click Vorda² in the " + statusArea + " to manage processes.", Font::body,
       Foreground::primary, 8},
      {Branding::copyrightLine(), Font::caption2, Foreground::tertiary, 8},
  };
}

TEST(SettingsWindow, HoldsSixLinesInOrder) {
  resetMachine();
  EXPECT_THAT(SettingsView::lines(), testing::ElementsAreArray(linesWith("system tray")));
  machine().words = platform::kMacWords;
  EXPECT_THAT(SettingsView::lines(), testing::ElementsAreArray(linesWith("menu bar")));
}

}  // namespace
