// What the kernel says of cgroups, in which others choose the names: the mounts, the cgroup of a
// process, its figures.

#include "fuzz/fuzzing.h"
#include "platform/linux/memory_groups.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes = fuzzing::text(data, size);
  for (const auto& hierarchy : platform::memoryHierarchiesIn(bytes)) {
    FUZZ_CHECK(hierarchy.version == 1 || hierarchy.version == 2);
    FUZZ_CHECK(hierarchy.root.starts_with('/') && hierarchy.mountPoint.starts_with('/'));
  }
  for (const int version : {1, 2}) {
    const std::string_view group = platform::memoryGroupIn(bytes, version);
    FUZZ_CHECK(group.empty() || group.front() == '/');
    const auto groups = platform::groupsUpwards(group, "/");
    FUZZ_CHECK(groups.size() <= 64);
    for (const std::string_view above : groups) {
      FUZZ_CHECK(platform::isAtOrBelow(group, above));
    }
    platform::reclaimableIn(bytes, version);
  }
  return 0;
}
