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
            R"("memoryUsedBytes":8589934592,"memoryFreeBytes":4831838208,"pressure":0.5,)"
            R"("pressureLevel":"low"},)"
            R"("processes":[{"pid":312,"name":"LoRA fine-tune: Llama 3 8B",)"
            R"("product":"Fine-tune","role":"training","memoryBytes":1611137024,)"
            R"("owner":"grace","protected":true,"ageSeconds":60,"processesBelow":2,)"
            R"("launchAgents":["trainer"],"color":"#ff8040",)"
            R"("commandLine":"python3 train.py --token \u2022\u2022\u2022",)"
            R"("commandLineCut":true}],)"
            R"("launchAgents":[{"label":"trainer","file":"/etc/systemd/user/trainer.service",)"
            R"("program":"python3 train.py","keepAlive":true,"loaded":true,"pid":312}]})"
            "\n");
}

TEST(MachineJson, OfAMachineThatTellsNothingIsStillWhole) {
  EXPECT_EQ(machineJson({.version = "1.2.3", .time = kTime}),
            R"({"format":1,"version":"1.2.3","time":"2025-11-24T16:00:00Z",)"
            R"("machine":{"system":"Linux","memoryTotalBytes":0,"memoryUsedBytes":0,)"
            R"("memoryFreeBytes":0,"pressure":0,"pressureLevel":"low"},"processes":[],)"
            R"("launchAgents":[]})"
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
