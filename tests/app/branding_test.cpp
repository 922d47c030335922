#include "app/branding.h"

#include <gtest/gtest.h>

#include "fakes/scripted_platform.h"

namespace {

std::string aboutBodyWith(const std::string& monitor) {
  return "See everything. Control everything.\n\n"
         "Menu bar process manager with a live color-coded memory pressure strip.\n"
         "Same scale as " +
         monitor +
         ". Names match the graph.\n\n"
         "Spots model servers, agents, and fine-tunes (LoRA, SFT, Unsloth, …)\n"
         "from live process signals — not a fixed app list.\n\n"
         "Developed by Halvek\n" +
         Branding::makerLine() + "\n" + Branding::copyrightLine();
}

TEST(Branding, MakerLineEndsInTheShortName) {
  const std::string line = Branding::makerLine();
  EXPECT_TRUE(line.ends_with(" (Halvek)")) << line;
  EXPECT_GT(line.size(), std::string(" (Halvek)").size());
}

TEST(Branding, CopyrightLineIsConfigured) {
  EXPECT_FALSE(Branding::copyrightLine().empty());
  EXPECT_EQ(Branding::copyrightLine().find('\n'), std::string::npos);
}

TEST(Branding, AboutBodyNamesTheSystemsMonitor) {
  resetMachine();
  EXPECT_EQ(Branding::aboutBody(), aboutBodyWith("System Monitor"));
  machine().words = platform::kMacWords;
  EXPECT_EQ(Branding::aboutBody(), aboutBodyWith("Activity Monitor"));
}

TEST(Branding, AboutAlertHasTheBadgeAndOneButton) {
  resetMachine();
  const Alert about = Branding::aboutAlert();
  EXPECT_EQ(about.messageText, "Vorda");
  EXPECT_EQ(about.informativeText, Branding::aboutBody());
  EXPECT_EQ(about.icon, Alert::Icon::badge);
  EXPECT_TRUE(about.buttons.empty());
  EXPECT_FALSE(about.activatesProgram);
}

}  // namespace
