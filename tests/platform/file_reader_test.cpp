#include "platform/linux/file_reader.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <malloc.h>

#include <string>

#include "tools/temp_folder.h"

namespace {

using platform::FileDescriptor;
using platform::FileReader;

/// What this program has asked of the C library and not given back.
std::size_t bytesInUse() {
  const auto memory = mallinfo2();
  return memory.uordblks + memory.hblkhd;
}

class FileReaderTest : public testing::Test {
 protected:
  std::optional<std::string_view> read(FileReader& reader, std::string_view bytes) {
    folder_.write("file", bytes);
    const FileDescriptor file(open((folder_ / "file").c_str(), O_RDONLY | O_CLOEXEC));
    return reader.read(file.get());
  }

 private:
  TempFolder folder_;
};

TEST_F(FileReaderTest, ReadsAFileOfAnySizeWhole) {
  constexpr std::size_t kSizes[] = {0, 1, 16383, 16384, 16385, 32768, 100000, 3 << 20};
  FileReader reader(16 << 20);
  for (const std::size_t size : kSizes) {
    std::string bytes(size, '\0');
    for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<char>(i * 31);
    EXPECT_EQ(read(reader, bytes), bytes) << size;
  }
}

TEST_F(FileReaderTest, ForgetsTheFileBefore) {
  FileReader reader(1024);
  EXPECT_EQ(read(reader, "a long one"), "a long one");
  EXPECT_EQ(read(reader, "short"), "short");
}

TEST_F(FileReaderTest, HandsTheMemoryForALongFileBack) {
  if (bytesInUse() == 0) GTEST_SKIP() << "this C library, or a sanitizer's, does not count";
  constexpr std::size_t kLong = 8 << 20;
  FileReader reader(16 << 20);
  read(reader, "short");
  const std::size_t before = bytesInUse();
  EXPECT_EQ(read(reader, std::string(kLong, 'x'))->size(), kLong);
  EXPECT_GE(bytesInUse(), before + kLong);
  EXPECT_EQ(read(reader, "short again"), "short again");
  EXPECT_LT(bytesInUse(), before + kLong / 8);
}

TEST_F(FileReaderTest, StopsAtItsLimit) {
  for (const std::size_t limit : {std::size_t{10}, std::size_t{20000}}) {
    FileReader reader(limit);
    EXPECT_EQ(read(reader, std::string(100000, 'x')), std::string(limit, 'x'));
  }
}

TEST_F(FileReaderTest, HasNothingOfWhatIsNoOpenFile) {
  FileReader reader(1024);
  EXPECT_FALSE(reader.read(-1));
  const FileDescriptor folder(open("/", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  EXPECT_FALSE(reader.read(folder.get()));
}

}  // namespace
