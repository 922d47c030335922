#include "app/front_end_choice.h"

#include <gtest/gtest.h>

#include "fakes/row_name.h"

namespace {

struct FrontEndChoiceRow {
  const char* name;
  Surroundings surroundings;
  FrontEndKind kind;
};

class FrontEndChoice : public testing::TestWithParam<FrontEndChoiceRow> {};

TEST_P(FrontEndChoice, FollowsTheSurroundings) {
  EXPECT_EQ(chooseFrontEnd(GetParam().surroundings), GetParam().kind);
}

constexpr FrontEndChoiceRow kFrontEndChoiceRows[] = {
    {"LogWithoutDisplay", {}, FrontEndKind::text},
    {"LogOverSsh", {.overSsh = true}, FrontEndKind::text},
    {"PipeWithoutDisplay", {.intoPipe = true}, FrontEndKind::text},
    {"PipeOnADesktop", {.intoPipe = true, .hasDisplay = true}, FrontEndKind::text},
    {"PipeOverSshWithForwardedDisplay",
     {.overSsh = true, .intoPipe = true, .hasDisplay = true},
     FrontEndKind::text},
    {"ServerConsole", {.onTerminal = true}, FrontEndKind::terminal},
    {"TerminalOverSsh", {.onTerminal = true, .overSsh = true}, FrontEndKind::terminal},
    {"TerminalOverSshWithForwardedDisplay",
     {.onTerminal = true, .overSsh = true, .hasDisplay = true},
     FrontEndKind::terminal},
    {"DesktopTerminal", {.onTerminal = true, .hasDisplay = true}, FrontEndKind::tray},
    {"DesktopAutostart", {.hasDisplay = true}, FrontEndKind::tray},
    {"DesktopAutostartOverSsh", {.overSsh = true, .hasDisplay = true}, FrontEndKind::tray},
};

INSTANTIATE_TEST_SUITE_P(Table, FrontEndChoice, testing::ValuesIn(kFrontEndChoiceRows),
                         rowName<FrontEndChoiceRow>);

}  // namespace
