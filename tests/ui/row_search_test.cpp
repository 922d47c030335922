#include "ui/row_search.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "fakes/row_name.h"
#include "ui/menu_builders.h"
#include "ui/menu_construction.h"

namespace {

VordaProcess soughtProcess() {
  VordaProcess process;
  process.pid = 4711;
  process.displayName = "LoRA fine-tune: Llama 3 8B";
  process.ownerName = "grace";
  process.commandLine = "python3 train.py --Data x";
  return process;
}

struct RowMatchRow {
  const char* name;
  const char* words;
  bool matches;
};

class RowMatch : public testing::TestWithParam<RowMatchRow> {};

TEST_P(RowMatch, LooksAtWhatARowSpeaksOf) {
  const MenuItem row = MenuConstruction::processItem(soughtProcess());
  EXPECT_EQ(RowSearch::matches(row, GetParam().words), GetParam().matches);
}

INSTANTIATE_TEST_SUITE_P(
    Table, RowMatch,
    testing::Values(RowMatchRow{"Name", "llama 3", true}, RowMatchRow{"Pid", "471", true},
                    RowMatchRow{"Owner", "GRACE", true}, RowMatchRow{"Command", "--data", true},
                    RowMatchRow{"Nothing", "", true}, RowMatchRow{"Absent", "qwen", false}),
    rowName<RowMatchRow>);

std::vector<std::string> titlesOf(const Menu& menu) {
  std::vector<std::string> titles;
  for (const MenuItem& item : menu.items) titles.push_back(item.title);
  return titles;
}

TEST(FilteredMenu, HasTheMatchesUnderTheirHeadings) {
  const MenuItem row = MenuConstruction::processItem(soughtProcess());
  VordaProcess other = soughtProcess();
  other.displayName = other.commandLine = "firefox";
  MenuItem more = MenuBuilders::command("… and 3 more Llama", Action::showMore);
  more.submenu = {row};
  const Menu menu{{MenuBuilders::label("Largest  Llama"), MenuBuilders::separator(),
                   MenuBuilders::label("— A —"), MenuConstruction::processItem(other), row, more,
                   MenuBuilders::separator(), MenuBuilders::label("— B —"),
                   MenuConstruction::processItem(other), MenuBuilders::separator(),
                   MenuBuilders::command("About Llama", Action::about)}};
  EXPECT_EQ(titlesOf(*RowSearch::filtered(menu, "llama")),
            (std::vector<std::string>{"", "— A —", row.title}));
  EXPECT_EQ(titlesOf(*RowSearch::filtered(menu, "qwen")),
            (std::vector<std::string>{"(nothing matches)"}));
}

}  // namespace
