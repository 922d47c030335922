#include "platform/linux/drm_fdinfo.h"

#include <gtest/gtest.h>

#include <array>
#include <map>
#include <optional>
#include <random>
#include <string>

#include "fakes/row_name.h"

namespace {

using platform::drmClient;

struct Row {
  const char* name;
  const char* lines;
  std::optional<std::uint64_t> cardBytes;
};

class CardBytes : public testing::TestWithParam<Row> {};

TEST_P(CardBytes, AreThoseOnTheCard) {
  const auto client = drmClient(GetParam().lines);
  ASSERT_TRUE(client);
  EXPECT_EQ(client->cardBytes, GetParam().cardBytes);
}

INSTANTIATE_TEST_SUITE_P(
    Table, CardBytes,
    testing::Values(
        Row{"NoMemoryTold", "drm-driver:\tmsm\ndrm-engine-gpu:\t17 ns\n", {}},
        Row{"OldAmd",
            "pos:    0\ndrm-driver:     amdgpu\ndrm-pdev:       0000:08:00.0\n"
            "drm-memory-vram:        2068 KiB\ndrm-memory-gtt:         8192 KiB\n",
            2068ULL << 10},
        Row{"NewAmdTellsTheSameTwice",
            "drm-driver:\tamdgpu\ndrm-total-vram:\t544428 KiB\ndrm-resident-vram:\t544428 KiB\n"
            "drm-memory-vram:\t544428 KiB\ndrm-memory-gtt: \t22528 KiB\n",
            544428ULL << 10},
        Row{"ResidentBeforeTotal",
            "drm-driver: xe\ndrm-total-vram0: 8 MiB\ndrm-resident-vram0: 5 MiB\n", 5ULL << 20},
        Row{"MemoryBeforeTotal",
            "drm-driver: amdgpu\ndrm-total-vram: 8 MiB\ndrm-memory-vram: 6 MiB\n", 6ULL << 20},
        Row{"TotalAlone", "drm-driver: xe\ndrm-total-vram0: 23992 KiB\n", 23992ULL << 10},
        Row{"NothingResident", "drm-driver: xe\ndrm-total-vram0: 8 MiB\ndrm-resident-vram0: 0\n",
            0},
        Row{"AnUnreadableFigureIsNone",
            "drm-driver: xe\ndrm-resident-vram0: much\ndrm-total-vram0: 3 MiB\n", 3ULL << 20},
        Row{"TwoTilesAddUp", "drm-driver: xe\ndrm-resident-vram0: 1 MiB\ndrm-resident-vram1: 2 MiB",
            3ULL << 20},
        Row{"Intel", "drm-driver: i915\ndrm-resident-local0: 7 MiB\ndrm-resident-system0: 9 MiB\n",
            7ULL << 20},
        Row{"IntegratedIntel", "drm-driver: i915\ndrm-resident-system0: 9 MiB\n", {}},
        Row{"Panthor", "drm-driver: panthor\ndrm-resident-memory: 4 MiB\n", 4ULL << 20},
        Row{"AcceleratorInRam",
            "    drm-driver:\tamdxdna_accel_driver\n    drm-total-memory:\t512 KiB\n",
            {}},
        Row{"Gtt", "drm-driver: amdgpu\ndrm-resident-gtt: 4 MiB\ndrm-resident-cpu: 4 MiB\n", {}},
        Row{"ABareNumberIsBytes", "drm-driver: xe\ndrm-resident-vram0: 4096\n", 4096},
        Row{"BlanksVary", "drm-driver:xe\ndrm-resident-vram0: \t 4\tKiB \r\n", 4096},
        Row{"Gigabytes", "drm-driver: xe\ndrm-resident-vram0: 2 GiB\n", 2ULL << 30},
        Row{"UnknownUnit", "drm-driver: xe\ndrm-resident-vram0: 2 pages\n", {}},
        Row{"TooMuchForANumber",
            "drm-driver: xe\ndrm-resident-vram0: 18446744073709551615 KiB\n",
            {}},
        Row{"TheSumStaysANumber",
            "drm-driver: xe\ndrm-resident-vram0: 18446744073709551615\ndrm-resident-vram1: 1\n",
            ~0ULL},
        Row{"RegionNamedAlike", "drm-driver: xe\ndrm-resident-vramp: 2 MiB\n", {}},
        Row{"PurgeableIsResidentToo",
            "drm-driver: xe\ndrm-resident-vram0: 2 MiB\ndrm-purgeable-vram0: 1 MiB\n", 2ULL << 20}),
    rowName<Row>);

TEST(DrmClientOf, TellsWhoseItIs) {
  const auto client =
      drmClient("pos:\t0\ndrm-driver:\txe\ndrm-client-id:\t30\ndrm-pdev:\t0000:04:00.0\n");
  ASSERT_TRUE(client);
  EXPECT_EQ(client->driver, "xe");
  EXPECT_EQ(client->device, "0000:04:00.0");
  EXPECT_EQ(client->id, 30);
}

TEST(DrmClientOf, IsNoneOfAnotherFile) {
  EXPECT_FALSE(drmClient(""));
  EXPECT_FALSE(drmClient("pos:\t0\nflags:\t0100002\nmnt_id:\t24\n"));
  EXPECT_FALSE(drmClient("drm-driver:\n"));
}

/// Random texts, against the rule written down a second time.
TEST(DrmClientOf, AgreesWithThePlainRule) {
  std::mt19937 random(4711);
  const auto pick = [&](int count) {
    return std::uniform_int_distribution<int>(0, count - 1)(random);
  };
  constexpr std::array<const char*, 3> kFigures{"resident", "memory", "total"};
  constexpr std::array<const char*, 5> kRegions{"vram0", "vram1", "local0", "gtt", "system"};
  constexpr std::array<const char*, 3> kUnits{"", " KiB", " MiB"};
  for (int round = 0; round < 2000; ++round) {
    std::map<std::string, std::array<std::optional<std::uint64_t>, 3>> told;
    std::string text = "drm-driver:\txe\n";
    for (int i = pick(12); i > 0; --i) {
      const auto figure = static_cast<std::size_t>(pick(3));
      const auto unit = static_cast<std::size_t>(pick(3));
      const auto number = static_cast<std::uint64_t>(pick(100'000));
      const std::string region = kRegions[static_cast<std::size_t>(pick(5))];
      text += "drm-" + std::string(kFigures[figure]) + "-" + region + ":" +
              std::string(static_cast<std::size_t>(pick(3)), '\t') + std::to_string(number) +
              kUnits[unit] + "\n";
      told[region][figure] = number << (10 * unit);
    }
    std::optional<std::uint64_t> expected;
    for (const auto& [region, figures] : told) {
      if (region == "gtt" || region == "system") continue;
      for (const auto& figure : figures) {
        if (!figure) continue;
        expected = expected.value_or(0) + *figure;
        break;
      }
    }
    const auto client = drmClient(text);
    ASSERT_TRUE(client);
    ASSERT_EQ(client->cardBytes, expected) << text;
  }
}

}  // namespace
