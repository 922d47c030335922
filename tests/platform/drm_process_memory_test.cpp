#include "platform/linux/drm_process_memory.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <string>

#include "platform/processes.h"
#include "tools/child_process.h"
#include "tools/temp_folder.h"

namespace {

using platform::DrmCard;
using platform::DrmProcessMemory;
using platform::FileDescriptor;
using platform::GpuUse;
using platform::ProcFs;
using testing::ElementsAre;
using testing::IsEmpty;

const char* const kFirstCard = "0000:04:00.0";
const char* const kSecondCard = "0000:08:00.0";

DrmCard card(const std::string& id, std::uint32_t renderMinor) {
  return {.id = id, .driver = "amdgpu", .computes = true, .nodes = {{226, renderMinor}}};
}

/// A folder in the place of /proc, in which a descriptor is a file that holds the numbers of the
/// device that it stands for.
class Clients : public testing::Test {
 protected:
  void open(int pid, int fd, const std::string& device, const std::string& fdinfo) const {
    const std::string process = std::to_string(pid);
    folder_.write(process + "/fd/" + std::to_string(fd), device);
    folder_.write(process + "/fdinfo/" + std::to_string(fd), fdinfo);
  }
  void open(int pid, int fd, std::uint32_t renderMinor, int client, std::uint64_t kibibytes) const {
    open(pid, fd, "226:" + std::to_string(renderMinor),
         "drm-driver:\tamdgpu\ndrm-client-id:\t" + std::to_string(client) +
             "\ndrm-resident-vram:\t" + std::to_string(kibibytes) + " KiB\n");
  }

  std::optional<DrmCard::Node> deviceOf(int folder, const char* name) {
    ++looks_;
    const FileDescriptor file(openat(folder, name, O_RDONLY | O_CLOEXEC));
    char text[32] = {};
    if (read(file.get(), text, sizeof text - 1) <= 0) return std::nullopt;
    const std::string numbers = text;
    const auto colon = numbers.find(':');
    if (colon == std::string::npos) return std::nullopt;
    return DrmCard::Node{static_cast<std::uint32_t>(std::stoul(numbers)),
                         static_cast<std::uint32_t>(std::stoul(numbers.substr(colon + 1)))};
  }

  /// "4711 on 0: 8 KiB"
  std::vector<std::string> uses(const DrmProcessMemory& clients) const {
    std::vector<std::string> words;
    for (const GpuUse& use : clients.uses(cards_)) {
      words.push_back(std::to_string(use.pid) + " on " + std::to_string(use.device) + ": " +
                      std::to_string(use.bytes >> 10) + " KiB");
    }
    return words;
  }
  std::vector<std::string> look(DrmProcessMemory& clients,
                                const std::vector<std::int32_t>& pids) const {
    clients.look(cards_, pids);
    return uses(clients);
  }

  DrmProcessMemory::Options options() {
    return {.deviceOf = [this](int folder, const char* name) { return deviceOf(folder, name); }};
  }

  const TempFolder folder_;
  const ProcFs proc_{folder_.path().c_str()};
  std::vector<DrmCard> cards_{card(kFirstCard, 128), card(kSecondCard, 129)};
  int looks_ = 0;
};

TEST_F(Clients, OfOneProcessAddUp) {
  open(4711, 3, 128, 1, 8);
  open(4711, 4, 128, 2, 16);
  open(4711, 5, 129, 1, 32);
  DrmProcessMemory clients(proc_, options());
  EXPECT_THAT(look(clients, {4711}), ElementsAre("4711 on 0: 24 KiB", "4711 on 1: 32 KiB"));
}

TEST_F(Clients, CountOnceOverTheWholeMachine) {
  open(4711, 3, 128, 7, 8);
  open(4711, 4, 128, 7, 8);  // duplicated
  open(4700, 9, 128, 7, 8);  // passed on
  DrmProcessMemory clients(proc_, options());
  EXPECT_THAT(look(clients, {4711, 4700}), ElementsAre("4700 on 0: 8 KiB"));
}

TEST_F(Clients, WithoutANumberAllCount) {
  for (const int fd : {3, 4}) {
    open(4711, fd, "226:128", "drm-driver: amdgpu\ndrm-memory-vram: 8 KiB\n");
  }
  DrmProcessMemory clients(proc_, options());
  EXPECT_THAT(look(clients, {4711}), ElementsAre("4711 on 0: 16 KiB"));
}

TEST_F(Clients, AreLookedForOnlyWhereSomebodyWantsToKnow) {
  open(4711, 3, 128, 1, 8);
  open(4712, 3, 128, 2, 8);
  DrmProcessMemory clients(proc_, options());
  EXPECT_THAT(look(clients, {4712}), ElementsAre("4712 on 0: 8 KiB"));
  EXPECT_EQ(looks_, 1);
  EXPECT_THAT(look(clients, {4711}), ElementsAre("4711 on 0: 8 KiB"));
}

TEST_F(Clients, ReadNothingOfOtherFiles) {
  open(4711, 3, "file", "drm-driver: amdgpu\ndrm-memory-vram: 8 KiB\n");
  open(4711, 4, "1:3", "drm-driver: amdgpu\ndrm-memory-vram: 8 KiB\n");
  open(4711, 5, "226:250", "drm-driver: amdgpu\ndrm-memory-vram: 8 KiB\n");
  DrmProcessMemory clients(proc_, options());
  EXPECT_THAT(look(clients, {4711}), IsEmpty());
}

TEST_F(Clients, OfProcessesThatAreGoneAreNone) {
  open(4711, 3, 128, 1, 8);
  DrmProcessMemory clients(proc_, options());
  look(clients, {4711});
  std::filesystem::remove_all(folder_ / "4711");
  EXPECT_THAT(look(clients, {4711, 4712}), IsEmpty());
}

TEST_F(Clients, AreNotLookedForWithoutACard) {
  open(4711, 3, 128, 1, 8);
  DrmProcessMemory clients(proc_, options());
  cards_.clear();
  EXPECT_THAT(look(clients, {4711}), IsEmpty());
  EXPECT_EQ(looks_, 0);
}

TEST_F(Clients, AreNotLookedForOnCardsThatOnlyShowAPicture) {
  open(4711, 3, 128, 1, 8);
  DrmProcessMemory clients(proc_, options());
  cards_ = {card(kFirstCard, 128)};
  cards_[0].computes = false;
  EXPECT_THAT(look(clients, {4711}), IsEmpty());
  EXPECT_EQ(looks_, 0);
}

TEST_F(Clients, OnACardThatFellAsleepStayAsTheyWere) {
  open(4711, 3, 128, 1, 8);
  open(4711, 4, 129, 2, 16);
  DrmProcessMemory clients(proc_, options());
  look(clients, {4711});
  open(4711, 3, 128, 1, 9);
  open(4711, 4, 129, 2, 17);
  cards_[0].sleeps = true;
  EXPECT_THAT(look(clients, {4711}), ElementsAre("4711 on 0: 8 KiB", "4711 on 1: 17 KiB"));
  // And while all sleep nobody's descriptors are looked at.
  cards_[1].sleeps = true;
  looks_ = 0;
  EXPECT_THAT(look(clients, {4711}), ElementsAre("4711 on 0: 8 KiB", "4711 on 1: 17 KiB"));
  EXPECT_EQ(looks_, 0);
}

TEST_F(Clients, OnACardWithoutMemoryAreLookedForOnce) {
  open(4711, 3, "226:128", "drm-driver: i915\ndrm-resident-system0: 8 KiB\n");
  DrmProcessMemory clients(proc_, options());
  cards_ = {card(kFirstCard, 128)};
  EXPECT_THAT(look(clients, {4711}), IsEmpty());
  EXPECT_EQ(looks_, 1);
  EXPECT_THAT(look(clients, {4711}), IsEmpty());
  EXPECT_EQ(looks_, 1);
}

TEST_F(Clients, BeyondTheBoundHaveTheirTurnNext) {
  for (int pid = 1; pid <= 3; ++pid) {
    open(pid, 3, 128, pid, 8);
    open(pid, 4, 128, pid + 10, 8);
  }
  auto bounded = options();
  bounded.mostDescriptors = 2;
  DrmProcessMemory clients(proc_, bounded);
  const std::vector<std::int32_t> all{1, 2, 3};
  EXPECT_THAT(look(clients, all), ElementsAre("1 on 0: 16 KiB"));
  EXPECT_THAT(look(clients, all), ElementsAre("1 on 0: 16 KiB", "2 on 0: 16 KiB"));
  EXPECT_THAT(look(clients, all),
              ElementsAre("1 on 0: 16 KiB", "2 on 0: 16 KiB", "3 on 0: 16 KiB"));
  EXPECT_EQ(looks_, 6);
}

TEST_F(Clients, OfOneProcessAreBounded) {
  for (int fd = 3; fd < 23; ++fd) open(4711, fd, 128, fd, 1);
  auto bounded = options();
  bounded.mostDescriptorsOfAProcess = 5;
  DrmProcessMemory clients(proc_, bounded);
  EXPECT_THAT(look(clients, {4711}), ElementsAre("4711 on 0: 5 KiB"));
}

TEST_F(Clients, SayWhenTheyWereLookedAt) {
  open(4711, 3, 128, 1, 8);
  DrmProcessMemory clients(proc_, options());
  const auto before = platform::processClock();
  look(clients, {4711});
  const auto uses = clients.uses(cards_);
  ASSERT_EQ(uses.size(), 1U);
  EXPECT_GE(uses[0].askedAt, before);
  EXPECT_LE(uses[0].askedAt, platform::processClock());
}

/// On this machine: /dev/null stands for a card's file.
TEST(RealDescriptors, AreToldApartByTheirDevice) {
  const FileDescriptor null(open("/dev/null", O_RDONLY | O_CLOEXEC));
  std::vector<DrmCard> cards{card(kFirstCard, 128)};
  cards[0].nodes = {{1, 3}};
  DrmProcessMemory clients(platform::systemProc());
  clients.look(cards, std::vector<std::int32_t>{getpid()});
  // The kernel's files of cards have a number of their own; this one is none, whoever lists it.
  EXPECT_THAT(clients.uses(cards), IsEmpty());
}

TEST(RealDescriptors, OfOthersAreNoError) {
  DrmProcessMemory clients(platform::systemProc());
  const std::vector<DrmCard> cards{card(kFirstCard, 128)};
  clients.look(cards, std::vector<std::int32_t>{1, 2147483647});
  EXPECT_THAT(clients.uses(cards), IsEmpty());
}

}  // namespace
