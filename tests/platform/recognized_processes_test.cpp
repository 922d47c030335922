// What a scan of the real machine tells of processes: those that the rules of roles, names and
// listing promise by example. The second look leaves them as they are.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <ostream>

#include "fakes/row_name.h"
#include "platform/users.h"
#include "scanner/process_scanner.h"
#include "tools/child_process.h"

namespace {

constexpr auto kNone = LabRole::none;
constexpr auto kInference = LabRole::inference;
constexpr auto kTraining = LabRole::training;
constexpr auto kAgent = LabRole::agent;

/// The record of this process; none where it is not listed.
std::optional<VordaProcess> recordOf(const ChildProcess& process, double minMemMB = 0) {
  const auto processes = ProcessScanner::scan(minMemMB, {});
  const auto found = std::ranges::find(processes, process.pid(), &VordaProcess::pid);
  if (found == processes.end()) return std::nullopt;
  return *found;
}

struct RealRow {
  const char* name;
  std::vector<std::string> arguments;
  LabRole role;
  std::string displayName;
  std::string product;
};

std::ostream& operator<<(std::ostream& out, const RealRow& row) {
  return out << row.name;
}

class RealProcess : public testing::TestWithParam<RealRow> {};

TEST_P(RealProcess, HasThePromisedRoleAndName) {
  const RealRow& row = GetParam();
  const ChildProcess process(playProcess({}, row.arguments));
  const auto record = recordOf(process);
  ASSERT_TRUE(record);
  EXPECT_EQ(record->labRole, row.role);
  EXPECT_EQ(record->displayName, row.displayName);
  EXPECT_EQ(record->product, row.product);
  EXPECT_EQ(record->cpu, 0);
}

using R = RealRow;

INSTANTIATE_TEST_SUITE_P(
    Roles, RealProcess,
    testing::Values(
        R{"Vllm", {"vllm"}, kInference, "vLLM", "vLLM"},
        R{"ShellThatTrains", {"bash", "-c", "python train.py"}, kNone, "bash", "Process"},
        R{"Zsh", {"zsh", "-c", "vllm serve a"}, kNone, "zsh", "Process"},
        R{"Sh", {"/bin/sh", "-c", "vllm serve a"}, kNone, "sh", "Process"},
        R{"Fish", {"fish", "-c", "vllm serve a"}, kNone, "fish", "Process"},
        R{"Tee", {"tee", "train.py"}, kNone, "tee", "Process"},
        R{"Caffeinate", {"caffeinate", "vllm", "serve"}, kNone, "caffeinate", "Process"},
        R{"Nohup", {"/usr/bin/nohup", "vllm", "serve"}, kNone, "nohup", "Process"},
        R{"Nice", {"nice", "python", "train.py"}, kNone, "nice", "Process"},
        R{"Timeout", {"timeout", "9", "python", "train.py"}, kNone, "timeout", "Process"},
        R{"Script", {"script", "-c", "python train.py"}, kNone, "script", "Process"},
        R{"TrainingThatListens",
          {"python", "train.py", "--port", "8000"},
          kTraining,
          "Training: train.py",
          "Training"},
        R{"MlxGenerates",
          {"python", "-m", "mlx_lm", "generate", "--model", "m"},
          kInference,
          "MLX: m",
          "MLX"},
        R{"MlxTrainsAnAdapter",
          {"python", "-m", "mlx_lm.lora", "--train"},
          kTraining,
          "LoRA fine-tune",
          "Fine-tune"},
        R{"ServerWithAnAdapter",
          {"python", "server.py", "--adapter", "lora_weights"},
          kNone,
          "Python: server.py",
          "Python"},
        R{"OllamaRunner",
          {"/usr/local/bin/ollama", "runner", "--model", "x"},
          kInference,
          "Ollama",
          "Ollama"},
        R{"NodeGateway", {"node", "gateway.js"}, kAgent, "node", "Process"},
        R{"NodeIndex", {"node", "index.js"}, kNone, "node", "Process"},
        R{"LlamaServer",
          {"llama-server", "-m", "model.gguf"},
          kInference,
          "LM Studio: model",
          "LM Studio"}),
    rowName<RealRow>);

INSTANTIATE_TEST_SUITE_P(
    Names, RealProcess,
    testing::Values(
        R{"LlamaServerWithAPort",
          {"/opt/homebrew/bin/llama-server", "-m", "/models/Meta-Llama-3-8B.Q4_K_M.gguf", "--port",
           "8081"},
          kInference,
          "LM Studio: Meta Llama 3 8B.Q4 K M  (:8081)",
          "LM Studio"},
        R{"LlamaServerWithoutAModel", {"llama-server"}, kInference, "LM Studio: LLM", "LM Studio"},
        R{"FirstOfTwoModels",
          {"llama-server", "--model=a", "--model", "b"},
          kInference,
          "LM Studio: a",
          "LM Studio"},
        R{"OptionWithoutAValue",
          {"llama-server", "--model"},
          kInference,
          "LM Studio: LLM",
          "LM Studio"},
        R{"ModelInAFolder",
          {"llama-server", "-m", "/models/Qwen2.5-7B-Instruct-4bit"},
          kInference,
          "LM Studio: Qwen2.5 7B Instruct 4bit",
          "LM Studio"},
        R{"ModelOfTwoEndings",
          {"llama-server", "-m", "x.mlx.gguf"},
          kInference,
          "LM Studio: x",
          "LM Studio"},
        R{"ModelWithoutAName",
          {"llama-server", "-m", ".gguf"},
          kInference,
          "LM Studio: Unknown model",
          "LM Studio"},
        R{"LongestModel",
          {"llama-server", "-m", std::string(48, 'x')},
          kInference,
          "LM Studio: " + std::string(48, 'x'),
          "LM Studio"},
        R{"ModelThatIsTooLong",
          {"llama-server", "-m", std::string(49, 'x')},
          kInference,
          "LM Studio: " + std::string(45, 'x') + "…",
          "LM Studio"},
        R{"MlxServer",
          {"python", "-m", "mlx_lm.server", "--model", "mlx-community/Qwen2.5-7B-Instruct-4bit"},
          kInference,
          "MLX Server: Qwen2.5 7B Instruct 4bit",
          "MLX"},
        R{"MlxServerOfAnotherModel",
          {"python", "-m", "mlx_lm.server", "--model", "mlx-community/Llama-3.2-3B-Instruct-4bit"},
          kInference,
          "MLX Server: Llama 3.2 3B Instruct 4bit",
          "MLX"},
        R{"MlxServerWithAPort",
          {"python", "-m", "mlx_lm.server", "--model", "mlx-community/Qwen2.5-7B-Instruct-4bit",
           "--port", "8080"},
          kInference,
          "MLX Server: Qwen2.5 7B Instruct 4bit  (:8080)",
          "MLX"},
        R{"MlxServes",
          {"mlx_lm", "serve", "--port", "9000"},
          kInference,
          "MLX Server: MLX model  (:9000)",
          "MLX"},
        R{"RapidMlx",
          {"rapid-mlx", "serve", "a/Qwen-7B"},
          kInference,
          "MLX Server: Qwen 7B",
          "MLX"},
        R{"Hermes", {"hermes"}, kNone, "Hermes", "Hermes"},
        R{"HermesAgent", {"hermes", "agent"}, kNone, "Hermes Agent", "Hermes"},
        R{"HermesGateway",
          {"/h/.hermes/bin/python", "-m", "hermes_cli", "gateway"},
          kNone,
          "Hermes Gateway",
          "Hermes"},
        R{"HermesGatewayOfNode",
          {"node", "/h/.hermes/gateway.js"},
          kAgent,
          "Hermes Gateway",
          "Hermes"},
        R{"OllamaServes", {"ollama", "serve"}, kInference, "Ollama Server", "Ollama"},
        R{"OllamaRunnerOfABundle",
          {"/Applications/Ollama.app/Contents/Resources/ollama", "runner"},
          kInference,
          "Ollama",
          "Ollama"},
        R{"Brevik", {"brevik"}, kNone, "Brevik", "Brevik"},
        R{"BrevikDashboard",
          {"python", "/h/.brevik/x.py", "dashboard"},
          kNone,
          "Brevik Dashboard",
          "Brevik"},
        R{"ZenthoMcp", {"python", "-m", "zentho.mcp"}, kAgent, "Zentho MCP Server", "Zentho"},
        R{"Zentho", {"python", "-m", "zentho"}, kNone, "Zentho", "Zentho"},
        R{"DockerNetworkHelper",
          {"/usr/local/bin/com.docker.vmnetd"},
          kNone,
          "Docker network helper (root)",
          "Docker"},
        R{"DockerBackend",
          {"/Applications/Docker.app/Contents/MacOS/com.docker.backend"},
          kNone,
          "Docker Desktop backend",
          "Docker"},
        R{"DockerTool", {"com.docker.cli"}, kNone, "Docker Desktop", "Docker"},
        R{"DockerDesktop",
          {"/Applications/Docker.app/Contents/MacOS/Docker Desktop"},
          kNone,
          "Docker",
          "App"},
        R{"Containermanagerd",
          {"/usr/libexec/containermanagerd"},
          kNone,
          "Apple containermanagerd",
          "System"},
        R{"Bundle", {"/Applications/Foo.app/Contents/MacOS/Foo"}, kNone, "Foo", "App"},
        R{"OutermostBundle",
          {"/Applications/Foo Bar.app/Contents/Helper.app/Contents/MacOS/H", "--x"},
          kNone,
          "Foo Bar",
          "App"},
        R{"Module",
          {"python3", "-m", "vllm.entrypoints.openai.api_server"},
          kInference,
          "Python: vllm.entrypoints.openai.api_server",
          "Python"},
        R{"PythonAlone", {"python3", "-m"}, kNone, "python3", "Process"},
        R{"Tool", {"/usr/bin/tool", "x"}, kNone, "tool", "Process"},
        R{"AdapterOfALlama",
          {"python", "train_lora.py", "--model_name_or_path", "meta-llama/Llama-2-7b"},
          kTraining,
          "LoRA fine-tune: Llama 2 7b",
          "Fine-tune"},
        R{"AdapterOfAnOption",
          {"python", "train_lora.py", "--base-model", "Llama-3-8B"},
          kTraining,
          "LoRA fine-tune: Llama 3 8B",
          "Fine-tune"},
        R{"ModelThatIsAnArgument",
          {"python", "train_lora.py", "models/llama3"},
          kTraining,
          "LoRA fine-tune: llama3",
          "Fine-tune"},
        R{"WordThatIsNoModel",
          {"python", "train_lora.py", "llama3"},
          kTraining,
          "LoRA fine-tune",
          "Fine-tune"},
        R{"QuantizedAdapter", {"python", "qlora.py"}, kTraining, "QLoRA fine-tune", "Fine-tune"},
        R{"FineTune", {"python", "finetune.py"}, kTraining, "Fine-tune", "Fine-tune"},
        R{"PreferencesBeforeUnsloth",
          {"python", "unsloth_dpo.py"},
          kTraining,
          "DPO train",
          "Fine-tune"},
        R{"ScriptThatTrains", {"python", "train.py"}, kTraining, "Training: train.py", "Training"}),
    rowName<RealRow>);

struct CommandLineRow {
  const char* name;
  std::vector<std::string> arguments;
  std::string commandLine;
};

std::ostream& operator<<(std::ostream& out, const CommandLineRow& row) {
  return out << row.name;
}

class RealCommandLine : public testing::TestWithParam<CommandLineRow> {};

TEST_P(RealCommandLine, HidesItsCredentials) {
  const ChildProcess process(playProcess({}, GetParam().arguments));
  const auto record = recordOf(process);
  ASSERT_TRUE(record);
  EXPECT_EQ(record->commandLine, GetParam().commandLine);
}

using C = CommandLineRow;
INSTANTIATE_TEST_SUITE_P(All, RealCommandLine,
                         testing::Values(C{"Token",
                                           {"python", "serve.py", "--token", "abc123"},
                                           "python serve.py --api-key •••"},
                                         C{"KeyAndToken",
                                           {"x", "--API_KEY", "sk-1", "--token", "t"},
                                           "x --api-key ••• --api-key •••"}),
                         rowName<CommandLineRow>);

TEST(RealProcesses, OfTheSystemAreNeverListed) {
  for (const char* const name : {"kernel_task", "launchd", "WindowServer"}) {
    const ChildProcess process(playProcess({"--memory", "64"}, {name, "vllm"}));
    EXPECT_FALSE(recordOf(process)) << name;
  }
}

TEST(RealProcesses, ThatAreOrdinaryAreListedFromASizeOn) {
  const ChildProcess process(playProcess({"--memory", "48"}, {"tool"}));
  EXPECT_FALSE(recordOf(process, 200));
  EXPECT_TRUE(recordOf(process, 40));
}

TEST(RealProcesses, OfOthersAreListedWhenTheyServeModels) {
  if (platform::ownUid() != 0) GTEST_SKIP() << "only root starts others' processes";
  const ChildProcess server(playProcess({"--user", "4711"}, {"vllm"}));
  const ChildProcess tool(playProcess({"--user", "4711"}, {"tool"}));
  const auto record = recordOf(server, 200);
  ASSERT_TRUE(record);
  EXPECT_EQ(record->labRole, kInference);
  EXPECT_TRUE(record->isProtected);
  EXPECT_EQ(record->ownerName, "uid 4711");
  EXPECT_FALSE(recordOf(tool));
}

TEST(RealProcesses, ThatTrainComeFirstAndTheLargerBeforeTheSmaller) {
  const ChildProcess small(playProcess({"--memory", "8"}, {"python", "train.py"}));
  const ChildProcess large(playProcess({"--memory", "40"}, {"python", "train.py"}));
  const ChildProcess server(playProcess({"--memory", "80"}, {"vllm"}));
  std::vector<pid_t> order;
  for (const auto& process : ProcessScanner::scan(0, {})) {
    for (const auto* const own : {&small, &large, &server}) {
      if (process.pid == own->pid()) order.push_back(process.pid);
    }
  }
  EXPECT_THAT(order, testing::ElementsAre(large.pid(), small.pid(), server.pid()));
}

}  // namespace
