// How the real program is started where there is neither a terminal nor a display.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include "tools/background_program.h"

namespace {

const BackgroundProgram::Environment kNoDisplay{{"DISPLAY", {}}, {"WAYLAND_DISPLAY", {}}};

TEST(ProgramStart, WithoutADisplayPrintsTheMenuAndEnds) {
  BackgroundProgram program({VORDA}, kNoDisplay);
  EXPECT_EQ(program.firstLine().substr(0, 1), "[") << "the strip";
  EXPECT_EQ(program.wait(), 0);
}

TEST(ProgramStart, WithAnArgumentSaysThatThereAreNone) {
  BackgroundProgram program({VORDA, "--help"}, kNoDisplay);
  const auto status = program.wait();
  ASSERT_TRUE(status && WIFEXITED(*status));
  EXPECT_EQ(WEXITSTATUS(*status), 2);
  EXPECT_EQ(program.firstLine(), "");
  EXPECT_EQ(program.errorOutput(),
            "vorda: takes no options; it looks where it is started (see vorda(1))\n");
}

}  // namespace
