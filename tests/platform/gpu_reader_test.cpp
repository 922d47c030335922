// All sources of what is known of cards together: a folder in the place of /sys, one in the place
// of /proc, and the real vorda-gpu with doubles of the driver's library.
#include "platform/linux/gpu_reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <chrono>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>

#include "platform/memory.h"
#include "platform/processes.h"
#include "tools/scoped_variable.h"
#include "tools/temp_folder.h"

namespace {

using namespace std::chrono_literals;
using platform::FileTree;
using platform::GpuDevice;
using platform::GpuReader;
using platform::GpuReading;
using platform::ProcFs;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

constexpr std::uint64_t kGiB = 1ULL << 30;

class Gpus : public testing::Test {
 protected:
  /// Those that were ended and not reaped yet.
  ~Gpus() override {
    while (waitpid(-1, nullptr, 0) > 0) continue;
  }

  Gpus() { behave(""); }

  void behave(const std::string& how) {
    behaviour_.emplace("NVML_DOUBLE", (how + " log=" + (folder_ / "log").string()).c_str());
  }
  std::string log() const {
    std::ifstream file(folder_ / "log");
    return {std::istreambuf_iterator<char>(file), {}};
  }

  GpuReader::Options options(const std::string& version = "v3") {
    return {.helper = {.program = VORDA_GPU, .patience = 60s, .rest = 3600s},
            .clients = {.deviceOf =
                            [](int, const char*) {
                              return platform::DrmCard::Node{226, 128};
                            }},
            .library = [this, version]() -> std::string {
              ++libraryLooks_;
              if (version.empty()) return "";
              return std::string(NVML_DOUBLES) + "/" + version + "/libnvidia-ml.so.1";
            },
            .now = [this] { return now_; }};
  }

  void addAmdCard() const {
    const std::string card = "sys/class/drm/renderD128/";
    folder_.write(card + "dev", "226:128\n");
    folder_.write(card + "device/uevent", "DRIVER=amdgpu\nPCI_SLOT_NAME=0000:04:00.0\n");
    folder_.write(card + "device/mem_info_vram_total", "17179869184\n");
    folder_.write(card + "device/mem_info_vram_used", "1073741824\n");
  }
  void open(int pid, const std::string& memory) const {
    folder_.write("proc/" + std::to_string(pid) + "/fd/3", "");
    folder_.write("proc/" + std::to_string(pid) + "/fdinfo/3",
                  "drm-driver: amdgpu\ndrm-client-id: " + std::to_string(pid) +
                      "\ndrm-resident-vram: " + memory + "\n");
  }
  void compute(int pid, std::uint64_t bytes) const {
    folder_.write("sys/class/kfd/kfd/topology/nodes/1/gpu_id", "5\n");
    folder_.write("sys/class/kfd/kfd/topology/nodes/1/properties", "drm_render_minor 128\n");
    folder_.write("sys/class/kfd/kfd/proc/" + std::to_string(pid) + "/vram_5",
                  std::to_string(bytes) + "\n");
  }
  void addNvidiaCard(const std::string& status, const std::string& control = "on") const {
    const std::string card = "sys/bus/pci/devices/0000:65:00.0/";
    folder_.write(card + "vendor", "0x10de\n");
    folder_.write(card + "class", "0x030200\n");
    folder_.write(card + "power/runtime_status", status + "\n");
    folder_.write(card + "power/control", control + "\n");
  }

  /// "4711 on 0000:65:00.0: 36864 MiB"
  static std::vector<std::string> uses(const GpuReading& reading) {
    std::vector<std::string> words;
    for (const auto& use : reading.uses) {
      words.push_back(std::to_string(use.pid) + " on " + reading.devices.at(use.device).id + ": " +
                      std::to_string(use.bytes >> 20) + " MiB");
    }
    return words;
  }

  const TempFolder folder_;
  const FileTree sys_{folder_ / "sys"};
  const ProcFs proc_ = [this] {
    std::filesystem::create_directory(folder_ / "proc");
    return ProcFs((folder_ / "proc").c_str());
  }();
  GpuReader::Clock::time_point now_ = GpuReader::Clock::now();
  int libraryLooks_ = 0;

 private:
  std::optional<ScopedVariable> behaviour_;
};

const std::vector<std::string> kNvidiaUses{"4711 on 0000:65:00.0: 36864 MiB",
                                           "4713 on 0000:65:00.0: 512 MiB"};

TEST_F(Gpus, AreNoneOnAMachineWithout) {
  GpuReader reader(sys_, proc_, options(""));
  reader.await();
  const GpuReading reading = reader.read({});
  EXPECT_THAT(reading.devices, IsEmpty());
  EXPECT_THAT(reading.uses, IsEmpty());
  EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "no process was started";
}

TEST_F(Gpus, OfNvidiaAreAsTheDriverSays) {
  GpuReader reader(sys_, proc_, options());
  const auto before = platform::processClock();
  EXPECT_THAT(reader.read({}).devices, IsEmpty());  // it is asked, and not waited for
  reader.await();
  const GpuReading reading = reader.read({});
  EXPECT_THAT(reading.devices, ElementsAre(GpuDevice{"0000:65:00.0", "NVIDIA H100",
                                                     platform::GpuCapacity{80 * kGiB, 38 * kGiB}}));
  EXPECT_EQ(uses(reading), kNvidiaUses);
  EXPECT_GE(reading.uses.at(0).askedAt, before);
}

TEST_F(Gpus, OfAmdAreAsTheKernelSays) {
  addAmdCard();
  open(4711, "300 MiB");
  GpuReader reader(sys_, proc_, options(""));
  const std::vector<std::int32_t> pids{4711};
  const GpuReading reading = reader.read({.pids = pids});
  EXPECT_THAT(reading.devices,
              ElementsAre(GpuDevice{"0000:04:00.0", "", platform::GpuCapacity{16 * kGiB, kGiB}}));
  EXPECT_THAT(uses(reading), ElementsAre("4711 on 0000:04:00.0: 300 MiB"));
}

TEST_F(Gpus, OfOneProcessCountByTheLargerFigure) {
  addAmdCard();
  open(4711, "300 MiB");
  compute(4711, 400 << 20);
  GpuReader reader(sys_, proc_, options(""));
  const std::vector<std::int32_t> pids{4711};
  EXPECT_THAT(uses(reader.read({.pids = pids})), ElementsAre("4711 on 0000:04:00.0: 400 MiB"));
  open(4711, "500 MiB");
  now_ += 10s;
  EXPECT_THAT(uses(reader.read({.pids = pids})), ElementsAre("4711 on 0000:04:00.0: 500 MiB"));
}

TEST_F(Gpus, OfSeveralMakersStandTogether) {
  addAmdCard();
  compute(4711, 400 << 20);
  GpuReader reader(sys_, proc_, options());
  reader.await();
  const GpuReading reading = reader.read({});
  ASSERT_THAT(reading.devices, SizeIs(2));
  EXPECT_EQ(reading.devices[0].id, "0000:04:00.0");
  EXPECT_THAT(uses(reading),
              ElementsAre("4711 on 0000:04:00.0: 400 MiB", "4711 on 0000:65:00.0: 36864 MiB",
                          "4713 on 0000:65:00.0: 512 MiB"));
}

TEST_F(Gpus, ThatTheKernelListsTooAreOne) {
  folder_.write("sys/class/drm/renderD129/dev", "226:129\n");
  folder_.write("sys/class/drm/renderD129/device/uevent",
                "DRIVER=nvidia\nPCI_SLOT_NAME=0000:65:00.0\n");
  GpuReader reader(sys_, proc_, options());
  reader.await();
  EXPECT_THAT(reader.read({}).devices, SizeIs(1));
}

TEST_F(Gpus, OfWhichNothingIsKnownAreLeftOut) {
  folder_.write("sys/class/drm/renderD128/dev", "226:128\n");
  folder_.write("sys/class/drm/renderD128/device/uevent",
                "DRIVER=xe\nPCI_SLOT_NAME=0000:04:00.0\n");
  GpuReader reader(sys_, proc_, options(""));
  EXPECT_THAT(reader.read({}).devices, IsEmpty());
  // But not one of which somebody holds memory.
  open(4711, "300 MiB");
  now_ += 10s;
  const std::vector<std::int32_t> pids{4711};
  EXPECT_THAT(uses(reader.read({.pids = pids})), ElementsAre("4711 on 0000:04:00.0: 300 MiB"));
}

TEST_F(Gpus, WithoutMemoryOfTheirOwnHaveTheMachines) {
  behave("unified");
  GpuReader reader(sys_, proc_, options());
  reader.await();
  const GpuReading reading = reader.read({});
  ASSERT_THAT(reading.devices, SizeIs(1));
  ASSERT_TRUE(reading.devices[0].capacity);
  EXPECT_EQ(static_cast<double>(reading.devices[0].capacity->totalBytes),
            platform::readMemory().totalBytes);
}

TEST_F(Gpus, HaveNoProcessesWhereThePidsAreOthers) {
  addAmdCard();
  compute(4711, 400 << 20);
  auto inside = options();
  inside.pidsAreTheDrivers = false;
  GpuReader reader(sys_, proc_, inside);
  reader.await();
  const GpuReading reading = reader.read({});
  EXPECT_THAT(reading.devices, SizeIs(2));
  EXPECT_THAT(reading.uses, IsEmpty());
}

TEST_F(Gpus, AreNotTouchedWhileOneSleeps) {
  addNvidiaCard("suspended", "auto");
  GpuReader reader(sys_, proc_, options());
  reader.await();
  EXPECT_THAT(reader.read({}).devices, IsEmpty());
  EXPECT_EQ(log(), "");
  EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "no process was started";
}

TEST_F(Gpus, AreLetGoOfWhenOneFallsAsleep) {
  addNvidiaCard("active");
  GpuReader reader(sys_, proc_, options());
  reader.await();
  ASSERT_EQ(uses(reader.read({})), kNvidiaUses);
  addNvidiaCard("suspended");
  now_ += 10s;
  // What was known stands, for as long as it sleeps.
  EXPECT_EQ(uses(reader.read({})), kNvidiaUses);
  for (int i = 0; i < 100; ++i) {
    now_ += 10s;
    EXPECT_EQ(uses(reader.read({})), kNvidiaUses);
  }
  EXPECT_EQ(log().find("init"), log().rfind("init"));
  while (waitpid(-1, nullptr, WNOHANG) == 0) reader.read({});
  addNvidiaCard("active");
  now_ += 10s;
  reader.read({});
  reader.await();
  EXPECT_NE(log().find("init"), log().rfind("init"));
}

TEST_F(Gpus, ThatMaySleepAreHeldOnToOnlyForTheAnswer) {
  addNvidiaCard("active", "auto");
  GpuReader reader(sys_, proc_, options());
  reader.await();
  EXPECT_EQ(uses(reader.read({})), kNvidiaUses);
  EXPECT_THAT(log(), HasSubstr("shutdown"));
}

TEST_F(Gpus, ThatStayAwakeAreHeldOnTo) {
  addNvidiaCard("active", "on");
  GpuReader reader(sys_, proc_, options());
  reader.await();
  EXPECT_EQ(uses(reader.read({})), kNvidiaUses);
  EXPECT_THAT(log(), Not(HasSubstr("shutdown")));
}

TEST_F(Gpus, AreAskedEveryTenSecondsAndEveryFiveWhileWatched) {
  addAmdCard();
  compute(4711, 1 << 20);
  GpuReader reader(sys_, proc_, options(""));
  const auto after = [&](std::chrono::milliseconds wait, bool isWatched, int megabytes) {
    compute(4711, static_cast<std::uint64_t>(megabytes) << 20);
    now_ += wait;
    const auto reading = reader.read({.isWatched = isWatched});
    return reading.uses.at(0).bytes >> 20;
  };
  EXPECT_EQ(after(0s, false, 1), 1U);
  EXPECT_EQ(after(9999ms, false, 2), 1U);
  EXPECT_EQ(after(1ms, false, 3), 3U);
  EXPECT_EQ(after(4999ms, true, 4), 3U);
  EXPECT_EQ(after(1ms, true, 5), 5U);
  EXPECT_EQ(after(5s, false, 6), 5U);
}

TEST_F(Gpus, OfProcessesThatAreShownSinceAreAskedAtOnceWhileWatched) {
  addAmdCard();
  open(4711, "300 MiB");
  open(4712, "100 MiB");
  GpuReader reader(sys_, proc_, options(""));
  const std::vector<std::int32_t> first{4711};
  const std::vector<std::int32_t> both{4711, 4712};
  ASSERT_THAT(reader.read({.isWatched = true, .pids = first}).uses, SizeIs(1));
  open(4711, "500 MiB");
  EXPECT_THAT(reader.read({.pids = both}).uses, SizeIs(1)) << "nobody looks";
  EXPECT_THAT(uses(reader.read({.isWatched = true, .pids = both})),
              ElementsAre("4711 on 0000:04:00.0: 300 MiB", "4712 on 0000:04:00.0: 100 MiB"));
  open(4712, "200 MiB");
  EXPECT_THAT(uses(reader.read({.isWatched = true, .pids = both})),
              ElementsAre("4711 on 0000:04:00.0: 300 MiB", "4712 on 0000:04:00.0: 100 MiB"));
}

TEST_F(Gpus, StandAsTheyWereWhileTheDriverHangs) {
  auto hasty = options();
  hasty.helper.patience = 60s;
  hasty.helper.rest = 0s;
  GpuReader reader(sys_, proc_, hasty);
  reader.await();
  ASSERT_EQ(uses(reader.read({})), kNvidiaUses);
  behave("crash=init");
  now_ += 10s;
  EXPECT_EQ(uses(reader.read({})), kNvidiaUses);
}

TEST_F(Gpus, AreForgottenWhenNothingIsHeardForLong) {
  auto once = options("few");
  GpuReader reader(sys_, proc_, once);
  reader.await();
  ASSERT_THAT(reader.read({}).devices, SizeIs(1));
  now_ += 301s;
  EXPECT_THAT(reader.read({}).devices, IsEmpty());
}

TEST_F(Gpus, WhoseLibraryIsMissingAreLookedForAMinuteLater) {
  GpuReader reader(sys_, proc_, options(""));
  reader.read({});
  now_ += 59s;
  reader.read({});
  EXPECT_EQ(libraryLooks_, 1);
  now_ += 10s;
  reader.read({});
  EXPECT_EQ(libraryLooks_, 2);
}

TEST_F(Gpus, ThatWentAreGone) {
  addAmdCard();
  compute(4711, 1 << 20);
  GpuReader reader(sys_, proc_, options(""));
  ASSERT_THAT(reader.read({}).devices, SizeIs(1));
  std::filesystem::remove_all(folder_ / "sys");
  now_ += 10s;
  EXPECT_THAT(reader.read({}).devices, IsEmpty());
  EXPECT_THAT(reader.read({}).uses, IsEmpty());
}

}  // namespace
