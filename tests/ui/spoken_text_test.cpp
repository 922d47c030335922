#include "ui/spoken_text.h"

#include <gtest/gtest.h>

#include "fakes/row_name.h"

namespace {

struct SpokenRow {
  std::string name;
  std::string title;
  std::string spoken;
};

class SpokenText : public testing::TestWithParam<SpokenRow> {};

TEST_P(SpokenText, SaysWhatTheGlyphsMean) {
  EXPECT_EQ(spokenText(GetParam().title), GetParam().spoken);
}

INSTANTIATE_TEST_SUITE_P(
    Table, SpokenText,
    testing::Values(
        SpokenRow{"Nothing", "", ""}, SpokenRow{"PlainWords", "Refresh now", "Refresh now"},
        SpokenRow{"Workload", "★ Ollama Server  ·   2.0 GB", "AI workload: Ollama Server, 2.0 GB"},
        SpokenRow{"Protected", "Safari  ·   600 MB 🔒", "Safari, 600 MB, protected"},
        SpokenRow{"KeptAlive", "com.ollama.serve  ·  on · pid 101 ↺",
                  "com.ollama.serve, on, pid 101, kept alive"},
        SpokenRow{"Heading", "— Model servers —", "Model servers"},
        SpokenRow{"StatusTitle", "Vorda²", "Vorda"},
        SpokenRow{"Summary", "Largest  2.0 GB  Ollama Server", "Largest 2.0 GB Ollama Server"},
        SpokenRow{"OtherScripts", "Größe é 模型", "Größe é 模型"}),
    rowName<SpokenRow>);

}  // namespace
