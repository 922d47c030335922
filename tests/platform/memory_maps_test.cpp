#include "platform/linux/memory_maps.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "fakes/row_name.h"

namespace {

using Files = std::vector<platform::MappedFile>;

struct MapsRow {
  const char* name;
  std::string maps;
  Files files;
};

class FilesInMaps : public testing::TestWithParam<MapsRow> {};

TEST_P(FilesInMaps, AreSummedUpByPath) {
  EXPECT_EQ(platform::filesInMaps(GetParam().maps, 3), GetParam().files);
}

const MapsRow kMapsRows[] = {
    {"Nothing", "", {}},
    {"AModelInTwoPieces",
     "1000-3000 r--p 00000000 08:01 42                         /models/a.gguf\n"
     "5000-6000 r--p 00002000 08:01 42                         /models/a.gguf\n",
     {{"/models/a.gguf", 0x3000}}},
    {"TheLargestThree",
     "1000-2000 r--p 0 08:01 1 /a\n1000-5000 r--p 0 08:01 2 /b\n"
     "1000-4000 r--p 0 08:01 3 /c\n1000-3000 r--p 0 08:01 4 /d\n",
     {{"/b", 0x4000}, {"/c", 0x3000}, {"/d", 0x2000}}},
    {"WhatIsNoFile",
     "1000-2000 rw-p 0 00:00 0\n1000-2000 rw-p 0 00:00 0 [heap]\n"
     "1000-2000 rw-s 0 00:01 9 /memfd:pool (deleted)\n1000-2000 rw-s 0 00:01 9 /dev/shm/x\n"
     "1000-2000 rw-s 0 00:01 9 /SYSV00000000 (deleted)\n1000-2000 rw-s 0 00:01 9 anon_inode:x\n",
     {}},
    {"BlanksInAPath",
     "1000-2000 r--p 0 08:01 1 /my models/a b.gguf\n",
     {{"/my models/a b.gguf", 0x1000}}},
    {"CutShort", "1000-2000 r--p 0 08:01 1 /a\n1000-20", {{"/a", 0x1000}}},
    {"Garbage", "x\n\n-\n1000\n1000-\n3000-1000 /a\nzz-1 /b\n", {}},
    {"NoUtf8", "1000-2000 r--p 0 08:01 1 /\xff\n", {}},
};

INSTANTIATE_TEST_SUITE_P(Table, FilesInMaps, testing::ValuesIn(kMapsRows), rowName<MapsRow>);

}  // namespace
