#include "ui/spoken_menu.h"

#include <gtest/gtest.h>

#include "fakes/row_name.h"
#include "ui/menu_construction.h"

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

VordaProcess processNamed(const std::string& name, double memory, LabRole role) {
  VordaProcess process;
  process.pid = 11;
  process.displayName = name;
  process.memMB = memory;
  process.labRole = role;
  return process;
}

TEST(SpokenTitle, OfAProcessNamesItsMemoryAndRole) {
  const auto spoken = [](LabRole role) {
    return spokenTitle(MenuConstruction::processItem(processNamed("Ollama Server", 5018, role)));
  };
  EXPECT_EQ(spoken(LabRole::inference), "Ollama Server, 4.9 GB, model server");
  EXPECT_EQ(spoken(LabRole::training), "Ollama Server, 4.9 GB, training");
  EXPECT_EQ(spoken(LabRole::agent), "Ollama Server, 4.9 GB, agent or tool");
  EXPECT_EQ(spoken(LabRole::none), "Ollama Server, 4.9 GB");
}

TEST(SpokenTitle, OfAProtectedProcessSaysSo) {
  VordaProcess process = processNamed("dockerd", 312, LabRole::none);
  process.isProtected = true;
  process.ownerName = "root";
  EXPECT_EQ(spokenTitle(MenuConstruction::processItem(process)), "dockerd, 312 MB, protected");
}

TEST(SpokenTitle, HasTheFiguresOfTheRow) {
  MenuItem row = MenuConstruction::processItem(processNamed("vllm", 312, LabRole::inference));
  row.title += "  ·  GPU 8.0 GB";
  EXPECT_EQ(spokenTitle(row), "vllm, 312 MB, GPU 8.0 GB, model server");
}

TEST(SpokenTitle, OfTheStripIsItsDescription) {
  MenuItem strip{.kind = MenuItem::Kind::strip};
  strip.strip = std::make_shared<MemoryPressureView>();
  strip.strip->pressure = 0.62;
  EXPECT_EQ(spokenTitle(strip), "Memory 62 percent used");
}

TEST(SpokenTitle, OfOtherItemsHasPausesForSeparators) {
  EXPECT_EQ(spokenTitle({.title = "Training / fine-tunes  1  ·  2.1 GB"}),
            "Training / fine-tunes 1, 2.1 GB");
  EXPECT_EQ(spokenTitle({.title = "com.ollama.serve  ·  on · pid 101 ↺"}),
            "com.ollama.serve, on, pid 101, kept alive");
  EXPECT_EQ(spokenTitle({.title = "Quit Vorda"}), "Quit Vorda");
  EXPECT_EQ(spokenTitle({}), "");
}

}  // namespace
