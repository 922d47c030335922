#include "platform/macos/pipe_reader.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <thread>

namespace {

using platform::Clock;

class PipeReader : public testing::Test {
 protected:
  PipeReader() { EXPECT_EQ(pipe(ends_), 0); }
  ~PipeReader() override {
    close(ends_[0]);
    closeWriter();
  }

  int reader() const { return ends_[0]; }
  void closeWriter() {
    if (ends_[1] >= 0) close(ends_[1]);
    ends_[1] = -1;
  }
  /// False when nobody reads any more.
  bool write(const std::string& bytes) const {
    return ::write(ends_[1], bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
  }

 private:
  int ends_[2] = {-1, -1};
};

Clock::time_point inAMinute() {
  return Clock::now() + std::chrono::minutes(1);
}

TEST_F(PipeReader, ReadsToTheEnd) {
  ASSERT_TRUE(write("one\n"));
  ASSERT_TRUE(write(std::string("\0two", 4)));
  closeWriter();
  EXPECT_EQ(platform::readToEnd(reader(), inAMinute()), std::string("one\n\0two", 8));
}

TEST_F(PipeReader, EmptyPipeHoldsNothing) {
  closeWriter();
  EXPECT_EQ(platform::readToEnd(reader(), inAMinute()), "");
}

TEST_F(PipeReader, EndThatDoesNotComeIsNotWaitedFor) {
  ASSERT_TRUE(write("partial"));
  EXPECT_FALSE(platform::readToEnd(reader(), Clock::now() + std::chrono::milliseconds(50)));
}

TEST_F(PipeReader, WhatIsNoPipeIsNotRead) {
  EXPECT_FALSE(platform::readToEnd(-1, Clock::now() + std::chrono::milliseconds(50)));
}

// Whoever prints that much has lost its mind, and would take all memory.
TEST_F(PipeReader, GivesUpOnWhatDoesNotEnd) {
  std::thread writer([this] {
    const std::string chunk(1 << 20, 'x');
    for (int megabytes = 0; megabytes < 64 && write(chunk); ++megabytes) {
    }
    closeWriter();
  });
  EXPECT_FALSE(platform::readToEnd(reader(), inAMinute()));
  writer.join();
}

}  // namespace
