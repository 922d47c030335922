#include "frontends/text/text_front_end.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <string>
#include <thread>

#include "fakes/scripted_platform.h"
#include "frontends/text/open_file.h"

namespace {

using testing::HasSubstr;
using testing::StartsWith;

/// What this prints on a machine with one process.
template <typename Run>
std::string printedBy(Run run) {
  resetMachine();
  machine().processes = {{.pid = 7, .arguments = {"/usr/bin/ollama", "serve"}, .footprintMB = 200}};
  const OpenFile out(std::tmpfile());
  EXPECT_EQ(run(out.get()), 0);
  std::string text(static_cast<std::size_t>(std::ftell(out.get())), '\0');
  std::rewind(out.get());
  EXPECT_EQ(std::fread(text.data(), 1, text.size(), out.get()), text.size());
  return text;
}

TEST(TextFrontEnd, DismissesAlertsAndNeverRunsScheduledWork) {
  TextFrontEnd frontEnd;
  EXPECT_EQ(frontEnd.runModal({}), kAlertDismissed);
  int runs = 0;
  const auto repeated = frontEnd.every(0, [&runs] { ++runs; });
  const auto delayed = frontEnd.after(0, [&runs] { ++runs; });
  EXPECT_EQ(runs, 0);
  repeated->cancel();
  delayed->cancel();
}

TEST(RunText, PrintsTheMenu) {
  EXPECT_THAT(printedBy([](std::FILE* out) { return runText(CharacterSet::unicode, out); }),
              HasSubstr("\n★ Ollama Server  ·   200 MB  ·  pid 7  [A]\n"));
}

TEST(RunJson, PrintsTheSample) {
  const std::string json = printedBy([](std::FILE* out) { return runJson("1.2.3", out); });
  EXPECT_THAT(json, StartsWith("{\"format\":1,\"version\":\"1.2.3\","));
  EXPECT_THAT(json, HasSubstr("{\"pid\":7,\"name\":\"Ollama Server\","));
}

TEST(RunBar, PrintsALine) {
  EXPECT_THAT(printedBy(runBar), StartsWith("{\"text\":\"50%\","));
}

TEST(WatchBar, PrintsLinesUntilNobodyReadsThem) {
  resetMachine();
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  int status = -1;
  std::thread writer([&status, out = ends[1]] {
    const OpenFile file(fdopen(out, "w"));
    status = watchBar(file.get(), 0.001);
  });
  OpenFile reader(fdopen(ends[0], "r"));
  for (int i = 0; i < 3; ++i) {
    char line[4096];
    ASSERT_NE(std::fgets(line, sizeof line, reader.get()), nullptr);
    EXPECT_THAT(line, StartsWith("{\"text\":\"50%\","));
  }
  reader.reset();
  writer.join();
  EXPECT_EQ(status, 0);
}

TEST(WatchBar, HearsAtOnceThatTheReaderIsGone) {
  resetMachine();
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  int status = -1;
  std::thread writer([&status, out = ends[1]] {
    const OpenFile file(fdopen(out, "w"));
    status = watchBar(file.get(), 3600);  // the next line never comes
  });
  char first = 0;
  EXPECT_EQ(read(ends[0], &first, 1), 1);
  close(ends[0]);
  writer.join();
  EXPECT_EQ(status, 0);
}

TEST(WatchBar, SaysWhenTheDiskIsFull) {
  resetMachine();
  const OpenFile out(std::fopen("/dev/full", "w"));
  if (out == nullptr) GTEST_SKIP() << "this system has no /dev/full";
  testing::internal::CaptureStderr();
  EXPECT_EQ(watchBar(out.get(), 0.001), 1);
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "vorda: can't write the line: No space left on device\n");
}

}  // namespace
