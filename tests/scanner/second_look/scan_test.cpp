// What a scan of a whole machine makes of both looks.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>

#include "fakes/row_name.h"
#include "fakes/scripted_platform.h"
#include "scanner/process_scanner.h"
#include "scanner/repeated_scan.h"

namespace {

using testing::ElementsAre;

constexpr auto kNone = LabRole::none;
constexpr auto kInference = LabRole::inference;
constexpr auto kTraining = LabRole::training;
constexpr auto kAgent = LabRole::agent;

VordaProcess scanned(const std::vector<std::string>& arguments) {
  resetMachine();
  machine().processes = {{.pid = 7, .arguments = arguments}};
  const auto processes = ProcessScanner::scan(0);
  EXPECT_EQ(processes.size(), 1U);
  return processes.empty() ? VordaProcess{} : processes.front();
}

/// What the rules of roles and names promise by example: the second look leaves it as it is.
struct PromisedRow {
  const char* name;
  std::vector<std::string> arguments;
  LabRole role;
  std::string displayName;
  std::string product;
};

std::ostream& operator<<(std::ostream& out, const PromisedRow& row) {
  return out << row.name;
}

class Promised : public testing::TestWithParam<PromisedRow> {};

TEST_P(Promised, IsWhatAScanTells) {
  const PromisedRow& row = GetParam();
  const auto process = scanned(row.arguments);
  EXPECT_EQ(process.labRole, row.role);
  EXPECT_EQ(process.displayName, row.displayName);
  EXPECT_EQ(process.product, row.product);
}

using P = PromisedRow;
INSTANTIATE_TEST_SUITE_P(
    All, Promised,
    testing::Values(
        P{"ShellThatTrains", {"bash", "-c", "python train.py"}, kNone, "bash", "Process"},
        P{"TrainingThatListens",
          {"python", "train.py", "--port", "8000"},
          kTraining,
          "Training: train.py",
          "Training"},
        P{"MlxGenerates",
          {"python", "-m", "mlx_lm", "generate", "--model", "m"},
          kInference,
          "MLX: m",
          "MLX"},
        P{"MlxTrainsAdapter",
          {"python", "-m", "mlx_lm.lora", "--train"},
          kTraining,
          "LoRA fine-tune",
          "Fine-tune"},
        P{"ServerWithAnAdapter",
          {"python", "server.py", "--adapter", "lora_weights"},
          kNone,
          "Python: server.py",
          "Python"},
        P{"OllamaRunner",
          {"/usr/local/bin/ollama", "runner", "--model", "x"},
          kInference,
          "Ollama",
          "Ollama"},
        P{"NodeGateway", {"node", "gateway.js"}, kAgent, "node", "Process"},
        P{"NodeIndex", {"node", "index.js"}, kNone, "node", "Process"},
        P{"LlamaServer",
          {"llama-server", "-m", "model.gguf"},
          kInference,
          "LM Studio: model",
          "LM Studio"},
        P{"LlamaServerWithPort",
          {"/opt/homebrew/bin/llama-server", "-m", "/models/Meta-Llama-3-8B.Q4_K_M.gguf", "--port",
           "8081"},
          kInference,
          "LM Studio: Meta Llama 3 8B.Q4 K M  (:8081)",
          "LM Studio"},
        P{"MlxServer",
          {"python", "-m", "mlx_lm.server", "--model", "mlx-community/Qwen2.5-7B-Instruct-4bit"},
          kInference,
          "MLX Server: Qwen2.5 7B Instruct 4bit",
          "MLX"},
        P{"MlxServerWithPort",
          {"python", "-m", "mlx_lm.server", "--model", "mlx-community/Qwen2.5-7B-Instruct-4bit",
           "--port", "8080"},
          kInference,
          "MLX Server: Qwen2.5 7B Instruct 4bit  (:8080)",
          "MLX"},
        P{"MlxServes",
          {"mlx_lm", "serve", "--port", "9000"},
          kInference,
          "MLX Server: MLX model  (:9000)",
          "MLX"},
        P{"RapidMlx",
          {"rapid-mlx", "serve", "a/Qwen-7B"},
          kInference,
          "MLX Server: Qwen 7B",
          "MLX"},
        P{"OllamaServes", {"ollama", "serve"}, kInference, "Ollama Server", "Ollama"},
        P{"OllamaRunnerInABundle",
          {"/Applications/Ollama.app/Contents/Resources/ollama", "runner"},
          kInference,
          "Ollama",
          "Ollama"},
        P{"DockerNetworkHelper",
          {"/usr/local/bin/com.docker.vmnetd"},
          kNone,
          "Docker network helper (root)",
          "Docker"},
        P{"DockerBackend",
          {"/Applications/Docker.app/Contents/MacOS/com.docker.backend"},
          kNone,
          "Docker Desktop backend",
          "Docker"},
        P{"DockerDesktop",
          {"/Applications/Docker.app/Contents/MacOS/Docker Desktop"},
          kNone,
          "Docker",
          "App"},
        P{"Bundle", {"/Applications/Foo.app/Contents/MacOS/Foo"}, kNone, "Foo", "App"},
        P{"NestedBundle",
          {"/Applications/Foo Bar.app/Contents/Helper.app/Contents/MacOS/H"},
          kNone,
          "Foo Bar",
          "App"},
        P{"Containermanagerd",
          {"/usr/libexec/containermanagerd"},
          kNone,
          "Apple containermanagerd",
          "System"},
        P{"AdapterOfALlama",
          {"python", "train_lora.py", "--model_name_or_path", "meta-llama/Llama-2-7b"},
          kTraining,
          "LoRA fine-tune: Llama 2 7b",
          "Fine-tune"},
        P{"ModuleWithoutModel",
          {"python3", "-m", "vllm.entrypoints.openai.api_server"},
          kInference,
          "Python: vllm.entrypoints.openai.api_server",
          "Python"},
        P{"UnslothThatPrefers", {"python", "unsloth_dpo.py"}, kTraining, "DPO train", "Fine-tune"},
        P{"Hermes", {"hermes"}, kNone, "Hermes", "Hermes"},
        P{"HermesGateway",
          {"/h/.hermes/bin/python", "-m", "hermes_cli", "gateway"},
          kNone,
          "Hermes Gateway",
          "Hermes"},
        P{"HermesGatewayOfNode",
          {"node", "/h/.hermes/gateway.js"},
          kAgent,
          "Hermes Gateway",
          "Hermes"},
        P{"HermesAgent", {"hermes", "agent"}, kNone, "Hermes Agent", "Hermes"},
        P{"Brevik", {"brevik"}, kNone, "Brevik", "Brevik"},
        P{"BrevikDashboard",
          {"python", "/h/.brevik/x.py", "dashboard"},
          kNone,
          "Brevik Dashboard",
          "Brevik"},
        P{"ZenthoMcp", {"python", "-m", "zentho.mcp"}, kAgent, "Zentho MCP Server", "Zentho"},
        P{"Zentho", {"python", "-m", "zentho"}, kNone, "Zentho", "Zentho"},
        P{"VllmServer", {"vllm"}, kInference, "vLLM", "vLLM"}),
    rowName<PromisedRow>);

/// A command line whose words are about something else.
struct WithdrawnRow {
  const char* name;
  std::vector<std::string> arguments;
  std::string displayName;
};

std::ostream& operator<<(std::ostream& out, const WithdrawnRow& row) {
  return out << row.name;
}

class Withdrawn : public testing::TestWithParam<WithdrawnRow> {};

TEST_P(Withdrawn, HasNoRoleAndItsOwnName) {
  const auto process = scanned(GetParam().arguments);
  EXPECT_EQ(process.labRole, kNone);
  EXPECT_EQ(process.displayName, GetParam().displayName);
}

using W = WithdrawnRow;
INSTANTIATE_TEST_SUITE_P(
    All, Withdrawn,
    testing::Values(
        W{"Search", {"grep", "llama-server"}, "grep"},
        W{"Installation", {"/usr/bin/python3", "-m", "pip", "install", "vllm"}, "python3"},
        W{"Remote", {"ssh", "box", "python3 train.py"}, "ssh"},
        W{"WordInAWord", {"python3", "pandora.py"}, "python3"},
        W{"HomeFolder", {"python3", "/home/isadora/x.py", "--a"}, "python3"},
        W{"Folder", {"/home/u/src/vllm/.venv/bin/python", "-m", "pylsp"}, "python"},
        W{"BuildFolder", {"/usr/bin/c++", "-Ix_autogen/include"}, "c++"},
        W{"WrapperBelowSudo", {"sudo", "nohup", "vllm", "serve"}, "sudo"},
        W{"ModelsList", {"ollama", "ps"}, "Ollama"}),
    rowName<WithdrawnRow>);

class Launchers : public testing::Test {
 protected:
  Launchers() { resetMachine(); }

  std::vector<std::string> listed(double minMemMB) {
    scan_.scan(minMemMB, {}, processes_);
    std::vector<std::string> rows;
    for (const auto& process : processes_) {
      rows.push_back(std::string(rawValue(process.labRole)) + " " + process.displayName + " " +
                     process.product);
    }
    return rows;
  }

  ProcessScanner::RepeatedScan scan_;
  std::vector<VordaProcess> processes_;
};

TEST_F(Launchers, HaveTheRoleOnlyWhileNoChildHasIt) {
  machine().processes = {
      {.pid = 1, .arguments = {"sudo", "vllm", "serve", "m"}, .footprintMB = 90}};
  EXPECT_THAT(listed(50), ElementsAre("inference vLLM: m vLLM"));
  machine().processes.push_back(
      {.pid = 2, .arguments = {"vllm", "serve", "m"}, .footprintMB = 80, .parent = 1});
  EXPECT_THAT(listed(50), ElementsAre("inference vLLM: m vLLM", "none sudo vLLM"));
  EXPECT_THAT(listed(50), ElementsAre("inference vLLM: m vLLM", "none sudo vLLM"));
  EXPECT_THAT(listed(85), ElementsAre("inference vLLM: m vLLM", "none sudo vLLM"));
  EXPECT_THAT(listed(95), ElementsAre("inference vLLM: m vLLM")) << "an ordinary process";
  machine().processes.pop_back();
  EXPECT_THAT(listed(95), ElementsAre("inference vLLM: m vLLM"));
  EXPECT_EQ(processes_[0].pid, 1);
}

TEST_F(Launchers, AreLeftOutWhenTheyAreOthers) {
  machine().processes = {
      {.pid = 1, .arguments = {"sudo", "-u", "x", "vllm"}, .effectiveUid = 0},
      {.pid = 2, .arguments = {"sh", "-c", "vllm"}, .effectiveUid = 1001, .parent = 1},
      {.pid = 3, .arguments = {"vllm"}, .effectiveUid = 1001, .parent = 2}};
  EXPECT_THAT(listed(0), ElementsAre("inference vLLM vLLM"));
  EXPECT_EQ(processes_[0].pid, 3);
  EXPECT_THAT(listed(0), ElementsAre("inference vLLM vLLM"));
}

TEST_F(Launchers, OfLaunchersAreOneWorkload) {
  machine().processes = {
      {.pid = 1, .arguments = {"srun", "torchrun", "train.py"}},
      {.pid = 2, .arguments = {"python", "/v/bin/torchrun", "train.py"}, .parent = 1},
      {.pid = 3, .arguments = {"python", "-u", "train.py", "--local_rank=0"}, .parent = 2},
      {.pid = 4, .arguments = {"python", "-u", "train.py", "--local_rank=1"}, .parent = 2}};
  EXPECT_THAT(listed(500), ElementsAre("training Training: train.py  (rank 0) Training",
                                       "training Training: train.py  (rank 1) Training"));
}

TEST_F(Launchers, KeepTheRoleBesideAnotherRole) {
  machine().processes = {{.pid = 1, .arguments = {"uv", "run", "train.py"}, .footprintMB = 9},
                         {.pid = 2, .arguments = {"vllm"}, .parent = 1}};
  EXPECT_THAT(listed(500),
              ElementsAre("training Training: train.py Training", "inference vLLM vLLM"));
}

class OllamasRunners : public Launchers {
 protected:
  static constexpr const char* kFolder = "/usr/share/ollama/.ollama/models";
  const std::string digest_ = std::string(60, 'a') + "bcde";

  void run(const std::vector<std::string>& command) {
    std::vector<std::string> arguments = command;
    arguments.insert(arguments.end(),
                     {"--model", std::string(kFolder) + "/blobs/sha256-" + digest_, "--port", "4"});
    machine().processes = {{.pid = 1, .arguments = arguments, .effectiveUid = 1001}};
  }

  void tell(const std::string& path) {
    machine().modelManifests[kFolder].push_back(
        {path, R"({"layers":[{"mediaType":"application/vnd.ollama.image.model","digest":"sha256:)" +
                   digest_ + R"("}]})"});
  }
};

TEST_F(OllamasRunners, AreCalledAfterTheirModel) {
  tell("registry.ollama.ai/library/llama3.1/latest");
  tell("registry.ollama.ai/library/llama3.1/8b");
  run({"ollama", "runner"});
  EXPECT_THAT(listed(0), ElementsAre("inference Ollama: llama3.1 8b Ollama"));
  run({"/usr/lib/ollama/llama-server"});
  EXPECT_THAT(listed(0), ElementsAre("inference Ollama: llama3.1 8b Ollama"));
  EXPECT_THAT(machine().manifestsRead, ElementsAre(std::pair(std::string(kFolder), 1001U)));
}

TEST_F(OllamasRunners, AreCalledAfterTheirBlobUntilAManifestTells) {
  run({"llama-server"});
  EXPECT_THAT(listed(0), ElementsAre("inference Ollama: aaaaaaaa Ollama"));
  tell("registry.ollama.ai/library/gemma3/4b");
  EXPECT_THAT(listed(0), ElementsAre("inference Ollama: aaaaaaaa Ollama"));
  EXPECT_EQ(machine().manifestsRead.size(), 1U) << "at most once a minute";
  machine().clock += 60'000'000'000;
  EXPECT_THAT(listed(0), ElementsAre("inference Ollama: gemma3 4b Ollama"));
  machine().clock += 60'000'000'000;
  EXPECT_THAT(listed(0), ElementsAre("inference Ollama: gemma3 4b Ollama"));
  EXPECT_EQ(machine().manifestsRead.size(), 2U) << "what is known is not asked again";
}

TEST_F(OllamasRunners, AreCalledAfterTheirModelOnceItsFolderAnswers) {
  tell("registry.ollama.ai/library/gemma3/4b");
  machine().manifestsHang = true;
  run({"ollama", "runner"});
  EXPECT_THAT(listed(0), ElementsAre("inference Ollama Ollama"));
  EXPECT_THAT(listed(0), ElementsAre("inference Ollama Ollama"));
  machine().manifestsHang = false;
  EXPECT_THAT(listed(0), ElementsAre("inference Ollama: gemma3 4b Ollama"));
}

TEST_F(OllamasRunners, KeepTheirNameWithoutAManifest) {
  run({"ollama", "runner"});
  EXPECT_THAT(listed(0), ElementsAre("inference Ollama Ollama"));
}

TEST_F(OllamasRunners, MakeReadNoMoreThanAFewFolders) {
  for (int i = 0; i < 100; ++i) {
    machine().processes.push_back(
        {.pid = i + 1,
         .arguments = {"ollama", "runner", "--model",
                       "/x" + std::to_string(i) + "/blobs/sha256-" + digest_}});
  }
  listed(0);
  listed(0);
  EXPECT_EQ(machine().manifestsRead.size(), second_look::OllamaModels::kMostFolders);
}

}  // namespace
