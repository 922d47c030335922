#include "frontends/text/text_front_end.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <memory>
#include <string>

namespace {

struct Close {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, Close>;

const Menu kMenu{{{.title = "Refresh now"}, {.title = "Quit Vorda"}}};

TEST(TextFrontEnd, PrintsTheMenuOnce) {
  const File out(std::tmpfile());
  EXPECT_EQ(TextFrontEnd().print(kMenu, out.get()), 0);
  std::rewind(out.get());
  char buffer[100];
  const std::size_t length = std::fread(buffer, 1, sizeof buffer, out.get());
  EXPECT_EQ(std::string(buffer, length), "Refresh now\nQuit Vorda\n");
}

TEST(TextFrontEnd, SaysWhenTheDiskIsFull) {
  const File out(std::fopen("/dev/full", "w"));
  if (out == nullptr) GTEST_SKIP() << "this system has no /dev/full";
  testing::internal::CaptureStderr();
  EXPECT_EQ(TextFrontEnd().print(kMenu, out.get()), 1);
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "vorda: can't write the menu: No space left on device\n");
}

TEST(TextFrontEnd, SaysWhenTheReaderIsGone) {
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  close(ends[0]);
  const File out(fdopen(ends[1], "w"));
  const auto before = std::signal(SIGPIPE, SIG_DFL);
  testing::internal::CaptureStderr();
  EXPECT_EQ(TextFrontEnd().print(kMenu, out.get()), 1);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "vorda: can't write the menu: Broken pipe\n");
  EXPECT_EQ(std::signal(SIGPIPE, before), SIG_DFL) << "the earlier answer to the signal is back";
}

TEST(TextFrontEnd, SaysWhenTheOutputIsClosed) {
  const File out(std::fopen("/dev/null", "r"));  // not open for writing
  testing::internal::CaptureStderr();
  EXPECT_EQ(TextFrontEnd().print(kMenu, out.get()), 1);
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "vorda: can't write the menu: Bad file descriptor\n");
}

TEST(TextFrontEnd, DismissesAlertsAndNeverRunsScheduledWork) {
  TextFrontEnd frontEnd;
  EXPECT_EQ(frontEnd.runModal({}), kAlertDismissed);
  int runs = 0;
  const auto repeated = frontEnd.every(0, [&runs] { ++runs; });
  const auto delayed = frontEnd.after(0, [&runs] { ++runs; });
  const File out(std::tmpfile());
  EXPECT_EQ(frontEnd.print(kMenu, out.get()), 0);
  EXPECT_EQ(runs, 0);
  repeated->cancel();
  delayed->cancel();
}

}  // namespace
