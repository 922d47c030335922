#include "fake_cards.h"

#include <fstream>
#include <string>

namespace bench {
namespace {

constexpr int kFirstMinor = 128;
constexpr int kCards = 2;

void writeText(const std::filesystem::path& path, const std::string& text) {
  std::filesystem::create_directories(path.parent_path());
  std::ofstream(path) << text;
}

void addCard(const std::filesystem::path& sys, int card) {
  const std::string number = std::to_string(kFirstMinor + card);
  const auto node = sys / "class/drm" / ("renderD" + number);
  writeText(node / "dev", "226:" + number + "\n");
  writeText(node / "device/uevent",
            "DRIVER=amdgpu\nPCI_SLOT_NAME=0000:0" + std::to_string(4 + card) + ":00.0\n");
  writeText(node / "device/product_name", "Instinct\n");
  writeText(node / "device/power/runtime_status", "active\n");
  writeText(node / "device/mem_info_vram_total", "68719476736\n");
  writeText(node / "device/mem_info_vram_used", "34359738368\n");
  const auto topology = sys / "class/kfd/kfd/topology/nodes" / std::to_string(1 + card);
  writeText(topology / "gpu_id", std::to_string(100 + card) + "\n");
  writeText(topology / "properties", "simd_count 1\ndrm_render_minor " + number + "\n");
}

/// What a process that computes on a card has open: a dozen files, of which three are the card's.
void addHolder(const std::filesystem::path& folder, std::int32_t pid, int card) {
  constexpr int kFiles = 12;
  const auto process = folder / "proc" / std::to_string(pid);
  for (int file = 0; file < kFiles; ++file) {
    const bool isCards = file >= 9;
    const std::string name = std::to_string(isCards ? 100 * (1 + card) + file : file);
    writeText(process / "fd" / name, "");
    writeText(process / "fdinfo" / name,
              isCards ? "pos:\t0\nflags:\t02100002\nmnt_id:\t30\nino:\t1065\ndrm-driver:\tamdgpu\n"
                        "drm-client-id:\t" +
                            std::to_string(pid) +
                            "\ndrm-pdev:\t0000:04:00.0\npasid:\t32770\n"
                            "drm-memory-vram:\t544428 KiB\ndrm-memory-gtt:\t1024 KiB\n"
                            "drm-engine-compute:\t123456789 ns\n"
                      : "pos:\t0\nflags:\t02\nmnt_id:\t14\nino:\t7\n");
  }
  writeText(folder / "sys/class/kfd/kfd/proc" / std::to_string(pid) /
                ("vram_" + std::to_string(100 + card)),
            "557494272\n");
}

/// By the name that addHolder gave the file.
std::optional<platform::DrmCard::Node> nodeOf(int, const char* name) {
  const int number = std::atoi(name);
  if (number < 100) return std::nullopt;
  return platform::DrmCard::Node{platform::kDrmMajor,
                                 static_cast<std::uint32_t>(kFirstMinor + number / 100 - 1)};
}

}  // namespace

FakeCards::FakeCards(std::span<const std::int32_t> holders)
    : sys_((folder_.path() / "sys").string()), proc_([&] {
        for (int card = 0; card < kCards; ++card) addCard(folder_.path() / "sys", card);
        std::filesystem::create_directories(folder_.path() / "proc");
        int card = 0;
        for (const std::int32_t pid : holders) addHolder(folder_.path(), pid, card++ % kCards);
        return platform::ProcFs((folder_.path() / "proc").c_str());
      }()) {
  reader_ = std::make_unique<platform::GpuReader>(
      sys_, proc_,
      platform::GpuReader::Options{.clients = {.deviceOf = nodeOf},
                                   .library = [] { return std::string(); },
                                   .now = [this] { return now_; }});
  platform::replaceGpuReader(reader_.get());
}

FakeCards::~FakeCards() {
  platform::replaceGpuReader(nullptr);
}

}  // namespace bench
