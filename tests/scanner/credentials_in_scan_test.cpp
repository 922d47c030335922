#include <gtest/gtest.h>

#include "fakes/row_name.h"
#include "fakes/scripted_platform.h"
#include "scanner/process_scanner.h"

namespace {

VordaProcess scannedLine(std::vector<std::string> arguments, std::string name = "") {
  resetMachine();
  machine().processes = {{.pid = 7, .arguments = std::move(arguments), .name = std::move(name)}};
  const auto processes = ProcessScanner::scan(0);
  EXPECT_EQ(processes.size(), 1U);
  return processes.empty() ? VordaProcess{} : processes.front();
}

struct NameRow {
  const char* name;
  std::vector<std::string> arguments;
  const char* displayName;
};

void PrintTo(const NameRow& row, std::ostream* out) {
  *out << row.name;
}

class NameWithACredential : public testing::TestWithParam<NameRow> {};

TEST_P(NameWithACredential, IsMadeOfTheMaskedArguments) {
  EXPECT_EQ(scannedLine(GetParam().arguments).displayName, GetParam().displayName);
}

INSTANTIATE_TEST_SUITE_P(
    Table, NameWithACredential,
    testing::Values(
        NameRow{"Model", {"llama-server", "-m", "sk-ant-api03-abc_def"}, "LM Studio: •••"},
        NameRow{
            "ModelInAUrl", {"llama-server", "--model", "https://u:p/w@h/m.gguf"}, "LM Studio: m"},
        NameRow{"Port", {"mlx", "serve", "m", "--port", "ghp_abcdef"}, "MLX Server: m  (:•••)"},
        NameRow{"Module", {"python", "-m", "HF_TOKEN=abc def"}, "Python: HF_TOKEN=•••"},
        NameRow{"Script", {"python", "/x/hf_abcdefghijklmnop.py"}, "Python: •••.py"},
        NameRow{"TrainedModel",
                {"python", "-m", "mlx_lm.lora", "--model", "hf_abcdefghijklmnop"},
                "LoRA fine-tune: •••"},
        NameRow{"Executable", {"/opt/ghp_abcdef"}, "•••"},
        NameRow{"ExecutableThatIsAUrl", {"https://u:pass@h"}, "u:•••@h"},
        NameRow{"RewrittenTitle", {"worker --hf-token abc def"}, "worker --hf-token ••• def"},
        NameRow{"Bundle", {"/Applications/sk-abc123def.app/Contents/x"}, "•••"}),
    rowName<NameRow>);

TEST(CredentialsInAScan, AreMaskedInANameThatComesFromThePath) {
  EXPECT_EQ(scannedLine({}, "ghp_abcdef").displayName, "•••");
}

TEST(CredentialsInAScan, AreMaskedInTheCommandLine) {
  EXPECT_EQ(scannedLine({"vllm", "serve", "m", "--hf-token", "a b", "--token", "c d"}).commandLine,
            "vllm serve m --hf-token ••• --api-key •••");
}

TEST(CredentialsInAScan, LeaveTheRoleAsItIs) {
  EXPECT_EQ(scannedLine({"vllm", "--hf-token", "y"}).labRole, LabRole::inference);
  EXPECT_EQ(scannedLine({"x", "--hf-token", "y"}).labRole, LabRole::none);
}

/// A credential is no word about the process that is given it.
TEST(CredentialsInAScan, TellNothingOfTheRole) {
  const auto process = scannedLine({"python3", "run.py", "--hf-token", "axolotl"});
  EXPECT_EQ(process.labRole, LabRole::none);
  EXPECT_EQ(process.displayName, "python3");
  EXPECT_EQ(process.commandLine, "python3 run.py --hf-token •••");
}

/// The model is told by an option whose value is masked: the name does not tell it either.
TEST(CredentialsInAScan, AreMaskedInTheNameOfAProduct) {
  const auto process = scannedLine({"vllm", "serve", "https://u:pass@h/m", "--port", "8000"});
  EXPECT_EQ(process.labRole, LabRole::inference);
  EXPECT_EQ(process.product, "vLLM");
  EXPECT_EQ(process.displayName.find("pass"), std::string::npos);
}

TEST(CredentialsInAScan, LeaveNameAndProductAsTheyAreWhenTheyHoldNone) {
  const auto process =
      scannedLine({"python", "-m", "mlx_lm.server", "--model", "a/Qwen-7B", "--hf-token", "x"});
  EXPECT_EQ(process.displayName, "MLX Server: Qwen 7B");
  EXPECT_EQ(process.product, "MLX");
}

}  // namespace
