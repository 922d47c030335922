#include "frontends/text/printed.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <string>

#include "frontends/text/open_file.h"

namespace {

/// The writing end of a pipe that nobody reads.
OpenFile unreadPipe() {
  int ends[2];
  if (pipe(ends) != 0) return nullptr;
  close(ends[0]);
  return OpenFile(fdopen(ends[1], "w"));
}

TEST(PrintOrSay, PrintsAllOfIt) {
  const OpenFile out(std::tmpfile());
  EXPECT_EQ(printOrSay("Refresh now\nQuit Vorda\n", "the menu", out.get()), 0);
  std::rewind(out.get());
  char buffer[100];
  const std::size_t length = std::fread(buffer, 1, sizeof buffer, out.get());
  EXPECT_EQ(std::string(buffer, length), "Refresh now\nQuit Vorda\n");
}

TEST(PrintOrSay, SaysWhenTheDiskIsFull) {
  const OpenFile out(std::fopen("/dev/full", "w"));
  if (out == nullptr) GTEST_SKIP() << "this system has no /dev/full";
  testing::internal::CaptureStderr();
  EXPECT_EQ(printOrSay("x\n", "the menu", out.get()), 1);
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "vorda: can't write the menu: No space left on device\n");
}

TEST(PrintOrSay, SaysWhenTheReaderIsGone) {
  const OpenFile out = unreadPipe();
  ASSERT_NE(out, nullptr);
  const auto before = std::signal(SIGPIPE, SIG_DFL);
  testing::internal::CaptureStderr();
  EXPECT_EQ(printOrSay("x\n", "the JSON", out.get()), 1);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "vorda: can't write the JSON: Broken pipe\n");
  EXPECT_EQ(std::signal(SIGPIPE, before), SIG_DFL) << "the earlier answer to the signal is back";
}

TEST(PrintOrSay, SaysWhenTheOutputIsClosed) {
  const OpenFile out(std::fopen("/dev/null", "r"));  // not open for writing
  testing::internal::CaptureStderr();
  EXPECT_EQ(printOrSay("x\n", "the menu", out.get()), 1);
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "vorda: can't write the menu: Bad file descriptor\n");
}

TEST(Print, TellsAReaderThatIsGoneFromAFault) {
  const OpenFile unread = unreadPipe();
  ASSERT_NE(unread, nullptr);
  EXPECT_EQ(print("x\n", unread.get()), Printed::readerGone);
  const OpenFile unwritable(std::fopen("/dev/null", "r"));
  EXPECT_EQ(print("x\n", unwritable.get()), Printed::failed);
}

}  // namespace
