// What a scan of a whole machine makes of both looks.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>

#include "fakes/row_name.h"
#include "fakes/scripted_platform.h"
#include "scanner/process_scanner.h"
#include "scanner/promised_examples.h"
#include "scanner/repeated_scan.h"

namespace {

using testing::ElementsAre;

VordaProcess scanned(const std::vector<std::string>& arguments) {
  resetMachine();
  machine().processes = {{.pid = 7, .arguments = arguments}};
  const auto processes = ProcessScanner::scan(0);
  EXPECT_EQ(processes.size(), 1U);
  return processes.empty() ? VordaProcess{} : processes.front();
}

class Promised : public testing::TestWithParam<PromisedExample> {};

TEST_P(Promised, IsWhatAScanTells) {
  const PromisedExample& row = GetParam();
  const auto process = scanned(row.arguments);
  EXPECT_EQ(process.labRole, row.role);
  EXPECT_EQ(process.displayName, row.displayName);
  EXPECT_EQ(process.product, row.product);
}

INSTANTIATE_TEST_SUITE_P(All, Promised, testing::ValuesIn(promisedExamples()),
                         rowName<PromisedExample>);

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
  EXPECT_EQ(process.labRole, LabRole::none);
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
  EXPECT_EQ(machine().manifestsRead.size(), recognition::OllamaModels::kMostFolders);
}

}  // namespace
