#include "ui/process_color.h"

#include <gtest/gtest.h>

#include <string>

#include "fakes/row_name.h"

namespace {

struct KeyRow {
  const char* name;
  VordaProcess process;
  const char* key;
};

VordaProcess process(const char* displayName, const char* product, LabRole role = LabRole::none,
                     bool isProtected = false) {
  return {
      .displayName = displayName, .product = product, .labRole = role, .isProtected = isProtected};
}

class FamilyKey : public testing::TestWithParam<KeyRow> {};

TEST_P(FamilyKey, NamesTheGroup) {
  EXPECT_EQ(ProcessColor::familyKey(GetParam().process), GetParam().key);
}

INSTANTIATE_TEST_SUITE_P(
    Table, FamilyKey,
    testing::Values(
        KeyRow{"Inference", process("x", "Ollama", LabRole::inference), "role:inference"},
        KeyRow{"Training", process("x", "Python", LabRole::training), "role:training"},
        KeyRow{"Agent", process("x", "Agent", LabRole::agent), "role:agent"},
        KeyRow{"RoleBeforeProtection", process("x", "System", LabRole::agent, true), "role:agent"},
        KeyRow{"System", process("launchd", "System"), "family:system"},
        KeyRow{"SystemInLowerCaseIsAProduct", process("x", "system"), "product:system"},
        KeyRow{"ProtectedDocker", process("x", "Docker", LabRole::none, true), "family:system"},
        KeyRow{"ProtectedProcess", process("x", "Process", LabRole::none, true), "family:system"},
        KeyRow{"Product", process("x", "LM Studio"), "product:lm studio"},
        KeyRow{"ProductBeyondAscii", process("x", "ÉCLAIR"), "product:éclair"},
        KeyRow{"Process", process("My Tool", "Process"), "name:my tool"},
        KeyRow{"App", process("Safari", "App"), "name:safari"},
        KeyRow{"AppInLowerCaseIsAProduct", process("Safari", "app"), "product:app"},
        KeyRow{"EmptyProduct", process("x", ""), "product:"},
        KeyRow{"EmptyName", process("", "App"), "name:"}),
    rowName<KeyRow>);

struct HashRow {
  const char* name;
  std::string text;
  std::int64_t hash;
  std::size_t index;
};

class StableHash : public testing::TestWithParam<HashRow> {};

TEST_P(StableHash, IsTheSameInEveryRun) {
  const auto& row = GetParam();
  EXPECT_EQ(ProcessColor::stableHash(row.text), row.hash);
  EXPECT_EQ(static_cast<std::size_t>(row.hash) % ProcessColor::palette().size(), row.index);
}

INSTANTIATE_TEST_SUITE_P(
    Table, StableHash,
    testing::Values(HashRow{"RoleInference", "role:inference", 3832704456072269291, 3},
                    HashRow{"RoleTraining", "role:training", 471420938876212062, 6},
                    HashRow{"RoleAgent", "role:agent", 3111850584909569, 1},
                    HashRow{"ProductDocker", "product:docker", 5112384270289498891, 3},
                    HashRow{"ProductOllama", "product:ollama", 5112384270601907729, 1},
                    HashRow{"ProductMlx", "product:mlx", 94910014015914414, 6},
                    HashRow{"ProductPython", "product:python", 5112384270642787783, 7},
                    HashRow{"NameSafari", "name:safari", 92819553674862415, 7},
                    HashRow{"OneLetter", "a", 97, 1}, HashRow{"Empty", "", 0, 0},
                    HashRow{"BytesCountUnsigned", "\xC3\xA9", 0xC3 * 31 + 0xA9, 6},
                    HashRow{"MultipleOfEight", "h", 104, 0}),
    rowName<HashRow>);

// 31 letters in a row from "`" to "~", so that any number has a spelling in base 31.
constexpr const char* kHashesToTheLeast = "feyzcnl|cv~wg";
constexpr const char* kNameHashesToTheLeast = "qyhi}mbx{~cdb";

TEST(StableHashDeathTest, OfTheLeastNumberEndsTheProgram) {
  const std::string key = ProcessColor::familyKey(process(kNameHashesToTheLeast, "App"));
  EXPECT_DEATH(ProcessColor::stableHash(kHashesToTheLeast), "vorda: .*-2\\^63");
  EXPECT_DEATH(ProcessColor::stableHash(key), "vorda: .*-2\\^63");
}

TEST(ProcessColor, OfANameWhoseKeyHashesToTheLeastIsTheFirst) {
  EXPECT_EQ(ProcessColor::color(process(kNameHashesToTheLeast, "App")), ProcessColor::palette()[0]);
  EXPECT_EQ(ProcessColor::color(process("dfvexemjnujkes", "Process")), ProcessColor::palette()[0]);
}

TEST(StableHashLimits, OfTheNumbersBesideTheLeastIsTheirAbsoluteValue) {
  std::string below = kHashesToTheLeast;
  --below.back();  // wraps to 2^63 - 1
  std::string above = kHashesToTheLeast;
  ++above.back();
  EXPECT_EQ(ProcessColor::stableHash(below), INT64_MAX);
  EXPECT_EQ(ProcessColor::stableHash(above), INT64_MAX);
}

TEST(ProcessColor, IsOneForAllProcessesOfARole) {
  EXPECT_EQ(ProcessColor::color(process("a", "Ollama", LabRole::inference)),
            ProcessColor::color(process("b", "MLX", LabRole::inference, true)));
  EXPECT_EQ(ProcessColor::color(process("a", "Ollama", LabRole::inference)),
            ProcessColor::palette()[3]);
}

TEST(ProcessColor, OfAProtectedProcessWithoutARoleIsGrey) {
  EXPECT_EQ(ProcessColor::color(process("a", "Docker", LabRole::none, true)),
            ProcessColor::systemMuted());
  EXPECT_EQ(ProcessColor::systemMuted(), (Color{0.55, 0.55, 0.55, 1}));
}

TEST(ProcessColor, OfAProductIsSharedWhateverTheName) {
  EXPECT_EQ(ProcessColor::color(process("a", "Docker")),
            ProcessColor::color(process("b", "Docker")));
  EXPECT_EQ(ProcessColor::color(process("a", "Ollama")),
            ProcessColor::color(process("a", "ollama")));
}

TEST(ProcessColor, OfOrdinaryProgramsFollowsTheName) {
  EXPECT_EQ(ProcessColor::color(process("Safari", "App")), ProcessColor::palette()[7]);
  EXPECT_EQ(ProcessColor::color(process("Safari", "Process")),
            ProcessColor::color(process("SAFARI", "App")));
  EXPECT_NE(ProcessColor::color(process("Safari", "App")),
            ProcessColor::color(process("Mail", "App")));
}

TEST(ProcessColor, PaletteHasEightOpaqueColors) {
  const Color expected[] = {{0.2, 0.92, 0.55}, {0.35, 0.75, 1.0}, {1.0, 0.72, 0.2},
                            {0.95, 0.4, 0.55}, {0.7, 0.55, 1.0},  {0.3, 0.95, 0.9},
                            {1.0, 0.5, 0.25},  {0.55, 0.85, 0.35}};
  for (std::size_t i = 0; i < 8; ++i) EXPECT_EQ(ProcessColor::palette()[i], expected[i]) << i;
}

}  // namespace
