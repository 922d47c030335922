#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

#include "fakes/row_name.h"
#include "scanner/process_scanner.h"
#include "tools/joined.h"

namespace {

/// Whatever a process calls itself, every operation answers, and soon.
struct HostileRow {
  const char* name;
  std::vector<std::string> arguments;
  LabRole role;
  std::string displayName;
};

std::ostream& operator<<(std::ostream& out, const HostileRow& row) {
  return out << row.name;
}

constexpr std::size_t kHuge = 2UL * 1024 * 1024;

std::string repeated(std::string_view part, std::size_t size) {
  std::string text;
  while (text.size() < size) text += part;
  return text;
}

std::vector<std::string> many(const std::string& argument, const std::string& last) {
  std::vector<std::string> arguments(100000, argument);
  arguments.push_back(last);
  return arguments;
}

class HostileInput : public testing::TestWithParam<HostileRow> {};

TEST_P(HostileInput, IsClassifiedNamedAndRedacted) {
  const HostileRow& row = GetParam();
  const std::string line = joined(row.arguments);
  const std::string exe = row.arguments.empty() ? "" : row.arguments.front();
  EXPECT_EQ(ProcessScanner::classifyLabRole(exe, row.arguments, line), row.role);
  const auto name = ProcessScanner::friendlyName(row.arguments, "fallback");
  EXPECT_TRUE(name.displayName == row.displayName) << name.displayName.substr(0, 200);
  EXPECT_EQ(ProcessScanner::redactSecrets(line + " --token end"), line + " --api-key •••");
}

INSTANTIATE_TEST_SUITE_P(
    All, HostileInput,
    testing::Values(
        HostileRow{"NoArguments", {}, LabRole::none, "fallback"},
        HostileRow{"EmptyArguments", {"", "", ""}, LabRole::none, "fallback"},
        HostileRow{"OnlySlashes", {"////", "//"}, LabRole::none, "/"},
        HostileRow{"HugeSlashes", {repeated("/", kHuge)}, LabRole::none, "/"},
        HostileRow{"HugeArgument", {"x", repeated("y", kHuge)}, LabRole::none, "x"},
        HostileRow{"HugeArgumentHoldingAMarker",
                   {"x", repeated("y", kHuge) + "vllm" + repeated("y", kHuge)},
                   LabRole::inference,
                   "x"},
        HostileRow{"HugeOfMarkers", {"x", repeated("train/", kHuge)}, LabRole::none, "x"},
        HostileRow{"HugeOfMarkersForPython",
                   {"python", repeated("qlora train ", kHuge)},
                   LabRole::training,
                   "QLoRA fine-tune"},
        HostileRow{"HugeOfHalfMarkers",
                   {"x", repeated("text-generation-inferenc", kHuge)},
                   LabRole::none,
                   "x"},
        HostileRow{"HugeOfCapitals", {"x", repeated("İK", kHuge)}, LabRole::none, "x"},
        HostileRow{"HugeModelName",
                   {"llama-server", "-m", repeated("m_", kHuge)},
                   LabRole::inference,
                   "LM Studio: " + repeated("m ", 44) + "m…"},
        HostileRow{"HugeModelNameWithSuffixes",
                   {"llama-server", "-m", repeated("é", kHuge) + ".mlx.pt.bin.gguf"},
                   LabRole::inference,
                   "LM Studio: " + repeated("é", 90) + "…"},
        HostileRow{"HugeBundleName", {"/" + repeated(".app", kHuge) + "/x"}, LabRole::none, ""},
        HostileRow{"HugeOfAlmostBundles", {repeated("/.app", kHuge)}, LabRole::none, ".app"},
        HostileRow{"HugeOfAlmostSecrets", {"x", repeated("--keys", kHuge)}, LabRole::none, "x"},
        HostileRow{"HugeBlanksBehindAnOption",
                   {"x", "--keys" + std::string(kHuge, ' ')},
                   LabRole::none,
                   "x"},
        HostileRow{"ManyArguments", many("a", "vllm"), LabRole::inference, "a"},
        HostileRow{"ManyOptionsWithoutModel", many("-u", "mlx.server"), LabRole::inference,
                   "MLX Server: MLX model"},
        HostileRow{"ManyEmptyArguments", many("", ""), LabRole::none, "fallback"},
        HostileRow{"NotUtf8",
                   {"/bin/\xFFvllm\xC3", "\xE2\x80", "\xF0\x9F"},
                   LabRole::inference,
                   "\xFFvllm\xC3"},
        HostileRow{"NotUtf8ButPython",
                   {"python", "\xFF/train_\xC3\x28.py"},
                   LabRole::training,
                   "Training: train_\xC3\x28.py"},
        HostileRow{"NulBytes",
                   {std::string("x\0vllm", 6)},
                   LabRole::inference,
                   std::string("x\0vllm", 6)}),
    rowName<HostileRow>);

TEST(HostileLine, OfSecretsAloneIsRedactedWhole) {
  constexpr std::size_t kCount = 200000;
  std::string line;
  std::string redacted;
  for (std::size_t i = 0; i < kCount; ++i) {
    line += "--key k ";
    redacted += "--api-key ••• ";
  }
  EXPECT_TRUE(ProcessScanner::redactSecrets(line) == redacted);
}

}  // namespace
