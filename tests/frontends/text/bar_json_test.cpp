#include "frontends/text/bar_json.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "fakes/row_name.h"
#include "ui/menu_builders.h"

namespace {

using MenuBuilders::label;
using MenuBuilders::separator;

MenuItem stripOfPressure(double pressure) {
  return {.kind = MenuItem::Kind::strip,
          .enabled = false,
          .strip = std::make_shared<MemoryPressureView>(MemoryPressureView{{}, pressure})};
}

TEST(BarJson, TellsTheSummaryAndTheLargestProcesses) {
  const Menu menu{{stripOfPressure(0.52), label("System   8.3 / 16 GB used"), separator(),
                   label("— Top RAM —"), label("bash\x1B[2J · 60 MB"), separator(),
                   label("— Model servers —")}};
  EXPECT_EQ(barJson(menu),
            R"({"text":"52%","full_text":"52%","tooltip":"System   8.3 / 16 GB used\u000a\u000a)"
            R"(\u2014 Top RAM \u2014\u000abash\ufffd[2J \u00b7 60 MB","class":"low",)"
            R"("percentage":52})"
            "\n");
}

struct BarClassRow {
  const char* name;
  double pressure;
  const char* part;
};

class BarClass : public testing::TestWithParam<BarClassRow> {};

TEST_P(BarClass, IsThePressure) {
  const std::string line = barJson({{stripOfPressure(GetParam().pressure)}});
  EXPECT_NE(line.find(GetParam().part), std::string::npos) << line;
}

INSTANTIATE_TEST_SUITE_P(
    Table, BarClass,
    testing::Values(BarClassRow{"Low", 0.54, R"("class":"low","percentage":54})"},
                    BarClassRow{"Medium", 0.55, R"("class":"medium","percentage":55})"},
                    BarClassRow{"High", 0.8, R"("class":"high","percentage":80})"}),
    rowName<BarClassRow>);

TEST(BarJson, OfNothingIsStillALine) {
  EXPECT_EQ(barJson({}),
            "{\"text\":\"0%\",\"full_text\":\"0%\",\"tooltip\":\"\",\"class\":\"low\","
            "\"percentage\":0}\n");
}

}  // namespace
