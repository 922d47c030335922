#include "scanner/gpu_sample.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fakes/scripted_platform.h"
#include "scanner/process_scanner.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint64_t kMB = 1 << 20;
constexpr std::uint64_t kGB = 1 << 30;
constexpr double kMinMemMB = 50;

class GpuSampleTest : public testing::Test {
 protected:
  GpuSampleTest() {
    resetMachine();
    machine().gpus.devices = {{"0000:65:00.0", "H100", platform::GpuCapacity{80 * kGB, 38 * kGB}}};
  }

  static void add(std::int32_t pid, const std::string& program, double footprintMB,
                  std::uint32_t uid = 1000) {
    machine().processes.push_back({.pid = pid,
                                   .arguments = {"/usr/bin/" + program},
                                   .effectiveUid = uid,
                                   .footprintMB = footprintMB,
                                   .startTime = 100});
  }
  static void use(std::int32_t pid, std::uint64_t megabytes, std::size_t device = 0,
                  std::uint64_t askedAt = 200) {
    machine().gpus.uses.push_back({pid, device, megabytes * kMB, askedAt});
  }

  GpuSample take() {
    scanned_ = ProcessScanner::scan(kMinMemMB, {}, GpuSampling::holders(false));
    return GpuSampling::take(scanned_, kMinMemMB, false, {});
  }
  static std::vector<std::int32_t> pids(const std::vector<VordaProcess>& processes) {
    std::vector<std::int32_t> result;
    result.reserve(processes.size());
    for (const auto& process : processes) result.push_back(process.pid);
    return result;
  }

  std::vector<VordaProcess> scanned_;
};

TEST_F(GpuSampleTest, IsEmptyOnAMachineWithoutCards) {
  machine().gpus = {};
  add(1, "firefox", 100);
  const GpuSample sample = take();
  EXPECT_THAT(sample.cards, IsEmpty());
  EXPECT_THAT(sample.processes, IsEmpty());
  EXPECT_FALSE(scanned_.at(0).gpuMemory);
}

TEST_F(GpuSampleTest, TellsWhatCardsHold) {
  EXPECT_THAT(take().cards, ElementsAre(GpuCard{"H100", 38, 80}));
}

TEST_F(GpuSampleTest, TellsCardsApartByTheirPlaces) {
  machine().gpus.devices.push_back({"0000:66:00.0", "H100", {}});
  machine().gpus.devices.push_back({"0000:67:00.0", "", platform::GpuCapacity{kGB, 0}});
  EXPECT_THAT(take().cards,
              ElementsAre(GpuCard{"H100 (0000:65:00.0)", 38, 80}, GpuCard{"0000:67:00.0", 0, 1}));
}

TEST_F(GpuSampleTest, SetsWhatAProcessHoldsOfEachCard) {
  machine().gpus.devices.push_back({"0000:66:00.0", "A100", {}});
  add(1, "firefox", 100);
  use(1, 300);
  use(1, 200, 1);
  take();
  EXPECT_EQ(scanned_.at(0).gpuMemory,
            (GpuMemory{500, {{"H100 (0000:65:00.0)", 300}, {"A100 (0000:66:00.0)", 200}}}));
}

TEST_F(GpuSampleTest, DoesNotTakeALaterProcessForTheOneThatWasAskedAbout) {
  add(1, "firefox", 100);
  use(1, 300, 0, 99);  // it was asked before the process started
  const GpuSample sample = take();
  EXPECT_FALSE(scanned_.at(0).gpuMemory);
  EXPECT_THAT(sample.processes, IsEmpty());
}

TEST_F(GpuSampleTest, KnowsAProcessThatStartedWhenItWasAsked) {
  add(1, "firefox", 100);
  use(1, 300, 0, 100);
  take();
  EXPECT_TRUE(scanned_.at(0).gpuMemory);
}

TEST_F(GpuSampleTest, NamesThoseWhoHoldMostFirst) {
  for (int pid = 1; pid <= 10; ++pid) {
    add(pid, "firefox", 100);
    use(pid, static_cast<std::uint64_t>(100 + pid));
  }
  EXPECT_THAT(pids(take().processes), ElementsAre(10, 9, 8, 7, 6, 5, 4, 3));
}

TEST_F(GpuSampleTest, LeavesOutOrdinaryProcessesThatHoldLittle) {
  add(1, "firefox", 100);
  add(2, "gimp", 100);
  add(3, "ollama", 100);
  use(1, 49);
  use(2, 50);
  use(3, 1);
  EXPECT_THAT(pids(take().processes), ElementsAre(2, 3));
  // What it holds is known all the same.
  for (const auto& process : scanned_) EXPECT_TRUE(process.gpuMemory) << process.pid;
}

TEST_F(GpuSampleTest, LeavesOutOthersOrdinaryProcesses) {
  add(1, "firefox", 100, 1001);
  add(2, "ollama", 100, 1001);
  use(1, 500);
  use(2, 500);
  EXPECT_THAT(pids(take().processes), ElementsAre(2));
}

TEST_F(GpuSampleTest, HoldsProcessesThatAreTooSmallForTheList) {
  add(1, "blender", 49);
  add(2, "firefox", 49);
  add(3, "gimp", 50);
  use(1, 4000);
  EXPECT_THAT(pids(take().processes), ElementsAre(1));
  EXPECT_THAT(pids(scanned_), ElementsAre(3));
}

TEST_F(GpuSampleTest, HoldsNobodyWhoIsNotThere) {
  use(4711, 500);
  EXPECT_THAT(take().processes, IsEmpty());
}

TEST_F(GpuSampleTest, AsksAboutThoseThatAreShown) {
  add(1, "firefox", 100);
  scanned_ = ProcessScanner::scan(kMinMemMB);
  const std::vector<std::int32_t> shown{1, 7};
  GpuSampling::take(scanned_, kMinMemMB, true, shown);
  EXPECT_EQ(machine().pidsOnGpus, shown);
  EXPECT_TRUE(machine().gpusAreWatched);
}

TEST_F(GpuSampleTest, IsNoPartOfTheFootprint) {
  add(1, "firefox", 100);
  use(1, 500);
  take();
  EXPECT_EQ(scanned_.at(0).memMB, 100);
}

}  // namespace
