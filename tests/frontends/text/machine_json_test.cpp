#include "frontends/text/machine_json.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using testing::HasSubstr;

constexpr std::time_t kTime = 1'764'000'000;  // 2025-11-24 16:00 UTC

VordaProcess someProcess() {
  VordaProcess process;
  process.pid = 312;
  process.displayName = "LoRA fine-tune: Llama 3 8B";
  process.product = "Fine-tune";
  process.memMB = 1536.5;
  process.commandLine = "python3 train.py --token •••";
  process.labRole = LabRole::training;
  process.matchedAgents = {"trainer"};
  process.isProtected = true;
  process.ownerName = "grace";
  process.processesBelow = 2;
  process.isCommandLineCut = true;
  process.startTime = 2'000'000'000;
  return process;
}

TEST(MachineJson, HoldsAllThatIsKnown) {
  const std::vector<VordaProcess> processes{someProcess()};
  const std::vector<VordaLaunchAgent> launchAgents{
      {"trainer", "/etc/systemd/user/trainer.service", "python3 train.py", true, true, 312}};
  EXPECT_EQ(machineJson({.version = "1.2.3",
                         .time = kTime,
                         .processClock = 62'900'000'000,
                         .sys = {8, 16, 4.5},
                         .processes = processes,
                         .launchAgents = launchAgents}),
            R"({"format":1,"version":"1.2.3","time":"2025-11-24T16:00:00Z",)"
            R"("machine":{"system":"Linux","memoryTotalBytes":17179869184,)"
            R"("memoryUsedBytes":8589934592,"memoryFreeBytes":4831838208,)"
            R"("memoryIsLimited":false,"pressure":0.5,"pressureLevel":"low"},)"
            R"("processes":[{"pid":312,"name":"LoRA fine-tune: Llama 3 8B",)"
            R"("product":"Fine-tune","role":"training","memoryBytes":1611137024,)"
            R"("owner":"grace","protected":true,"ageSeconds":60,"processesBelow":2,)"
            R"("launchAgents":["trainer"],"color":"#ff8040",)"
            R"("commandLine":"python3 train.py --token \u2022\u2022\u2022",)"
            R"("commandLineCut":true}],)"
            R"("gpus":[],"families":[],)"
            R"("launchAgents":[{"label":"trainer","file":"/etc/systemd/user/trainer.service",)"
            R"("program":"python3 train.py","keepAlive":true,"loaded":true,"pid":312}]})"
            "\n");
}

TEST(MachineJson, SaysThatItsFiguresAreALimits) {
  const SystemMemory::Snapshot sys{.usedGB = 1, .totalGB = 2, .isLimit = true};
  EXPECT_THAT(machineJson({.version = "1.2.3", .time = kTime, .sys = sys}),
              testing::HasSubstr(R"("memoryIsLimited":true)"));
}

TEST(MachineJson, TellsSwapAndStallsWhereTheyAreKnown) {
  const SystemMemory::Snapshot sys{.swappedGB = 1, .stalls = platform::MemoryStalls{12.5, 3}};
  EXPECT_THAT(machineJson({.version = "1.2.3", .time = kTime, .sys = sys}),
              HasSubstr(R"("swapUsedBytes":1073741824,)"
                        R"("memoryStalls":{"somePercent":12.5,"fullPercent":3},)"));
}

TEST(MachineJson, OfAMachineThatTellsNothingIsStillWhole) {
  EXPECT_EQ(machineJson({.version = "1.2.3", .time = kTime}),
            R"({"format":1,"version":"1.2.3","time":"2025-11-24T16:00:00Z",)"
            R"("machine":{"system":"Linux","memoryTotalBytes":0,"memoryUsedBytes":0,)"
            R"("memoryFreeBytes":0,"memoryIsLimited":false,"pressure":0,"pressureLevel":"low"},)"
            R"("processes":[],"gpus":[],"families":[],"launchAgents":[]})"
            "\n");
}

TEST(MachineJson, WhatIsNotKnownIsNull) {
  VordaProcess process = someProcess();
  process.startTime.reset();
  const std::vector<VordaProcess> processes{process};
  const std::vector<VordaLaunchAgent> launchAgents{{.label = "x"}};
  const std::string json = machineJson(
      {.version = "1.2.3", .time = kTime, .processes = processes, .launchAgents = launchAgents});
  EXPECT_THAT(json, HasSubstr(R"("ageSeconds":null)"));
  EXPECT_THAT(json, HasSubstr(R"("loaded":false,"pid":null)"));
}

TEST(MachineJson, TellsOfTheCardsAndWhoHoldsThem) {
  VordaProcess process = someProcess();
  process.gpuMemory = GpuMemory{1536, {{"H100", 1024}, {"A100", 512}}};
  const std::vector<VordaProcess> processes{process};
  // Listed for the card's memory alone; the second holds too little.
  GpuSample gpus{.cards = {{"H100", 38.25, 80}}, .unlisted = {{}, {}}};
  gpus.unlisted[0].pid = 400;
  gpus.unlisted[0].gpuMemory = GpuMemory{50, {{"A100", 50}}};
  gpus.unlisted[1].pid = 401;
  gpus.unlisted[1].gpuMemory = GpuMemory{49, {{"A100", 49}}};
  const std::string json =
      machineJson({.version = "1.2.3", .time = kTime, .processes = processes, .gpus = &gpus});
  EXPECT_THAT(json, HasSubstr(R"("gpus":[{"gpu":"H100",)"
                              R"("memoryTotalBytes":85899345920,"memoryUsedBytes":41070624768}])"));
  EXPECT_THAT(json, HasSubstr(R"("gpuMemoryBytes":1610612736,"gpuShares":[)"
                              R"({"gpu":"H100","bytes":1073741824},)"
                              R"({"gpu":"A100","bytes":536870912}])"));
  EXPECT_THAT(json, HasSubstr(R"({"pid":400,)"));
  EXPECT_THAT(json, testing::Not(HasSubstr(R"({"pid":401,)")));
}

TEST(MachineJson, TellsWhatIsMappedAndShared) {
  VordaProcess process = someProcess();
  process.mapped = MappedMemory{
      .mappedMB = 1024, .sharedMB = 512, .modelMB = 1024, .files = {{"a.gguf", 2048, true}}};
  process.leftBehindBy = 812;
  const std::vector<VordaProcess> processes{process};
  const std::string json = machineJson({.version = "1.2.3", .time = kTime, .processes = processes});
  EXPECT_THAT(json, HasSubstr(R"("mappedBytes":1073741824,"sharedBytes":536870912,)"
                              R"("mappedFiles":[{"file":"a.gguf","bytes":2147483648,)"
                              R"("isModel":true}])"));
  EXPECT_THAT(json, HasSubstr(R"("leftBehindBy":812,)"));
}

TEST(MachineJson, TellsWhoBelongsTogether) {
  VordaProcess head = someProcess();
  head.family = 312;
  VordaProcess helper = head;
  helper.pid = 313;
  helper.displayName = "helper";
  helper.memMB = 2;
  const std::vector<VordaProcess> processes{head};
  const std::vector<VordaProcess> unlisted{helper};
  const ShownFamilies families(processes, unlisted, {});
  EXPECT_THAT(
      machineJson(
          {.version = "1.2.3", .time = kTime, .processes = processes, .families = &families}),
      HasSubstr(R"("families":[{"head":312,"name":"LoRA fine-tune: Llama 3 8B",)"
                R"("memoryAtMostBytes":1613234176,"members":[)"
                R"({"pid":312,"name":"LoRA fine-tune: Llama 3 8B",)"
                R"("memoryBytes":1611137024},)"
                R"({"pid":313,"name":"helper","memoryBytes":2097152}]}])"));
}

TEST(MachineJson, MasksTheCredentialsOfALaunchAgent) {
  const std::vector<VordaLaunchAgent> launchAgents{
      {.label = "x", .program = "serve --api-key sk-verysecret1234"}};
  const std::string json =
      machineJson({.version = "1.2.3", .time = kTime, .launchAgents = launchAgents});
  EXPECT_THAT(json, testing::Not(HasSubstr("verysecret")));
  EXPECT_THAT(json, HasSubstr("serve --api-key"));
}

TEST(MachineJson, NobodysNameSteersATerminal) {
  VordaProcess process = someProcess();
  process.displayName = "x\x1B[2J\u009B\xFF\"";
  const std::vector<VordaProcess> processes{process};
  EXPECT_THAT(machineJson({.version = "1.2.3", .time = kTime, .processes = processes}),
              HasSubstr(R"("name":"x\u001b[2J\u009b\ufffd\"")"));
}

}  // namespace
