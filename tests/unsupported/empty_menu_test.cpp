#include <gtest/gtest.h>
#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <string>

namespace {

struct Outcome {
  std::string text;
  int status = -1;
};

Outcome runProgram() {
  Outcome outcome;
  std::FILE* output = popen(PROGRAM, "r");
  if (output == nullptr) return outcome;
  std::array<char, 4096> buffer = {};
  std::size_t length = 0;
  while ((length = std::fread(buffer.data(), 1, buffer.size(), output)) > 0) {
    outcome.text.append(buffer.data(), length);
  }
  const int status = pclose(output);
  if (WIFEXITED(status)) outcome.status = WEXITSTATUS(status);
  return outcome;
}

TEST(UnsupportedSystem, HasAMenuOfNothing) {
  const Outcome outcome = runProgram();
  EXPECT_EQ(outcome.text,
            "[········································]  0%\n"
            "System   0.0 / 0 GB used\n"
            "Training / fine-tunes  none\n"
            "Model servers  none\n"
            "\n"
            "— Top RAM (colors match graph) —\n"
            "  (nothing above threshold)\n");
  EXPECT_EQ(outcome.status, 0);
}

}  // namespace
