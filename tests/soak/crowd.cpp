#include "soak/crowd.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "tools/argument_pointers.h"

Crowd::Crowd(const std::map<std::string, int>& kinds) {
  // Titles count as a program's arguments when they begin with its name.
  const std::string program = folder_ / "llama-server";
  std::filesystem::copy_file(CROWD_PROGRAM, program);
  constexpr std::size_t kRoom = 400;
  std::vector<std::string> words{program};
  for (const auto& [kind, count] : kinds) {
    words.push_back("--" + kind);
    words.push_back(std::to_string(count));
  }
  words.emplace_back(kRoom, 'x');

  int input[2];
  int output[2];
  EXPECT_EQ(pipe2(input, O_CLOEXEC), 0);
  EXPECT_EQ(pipe2(output, O_CLOEXEC), 0);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, input[0], STDIN_FILENO);
  posix_spawn_file_actions_adddup2(&actions, output[1], STDOUT_FILENO);
  EXPECT_EQ(posix_spawn(&pid_, program.c_str(), &actions, nullptr, argumentPointers(words).data(),
                        environ),
            0);
  posix_spawn_file_actions_destroy(&actions);
  close(input[0]);
  close(output[1]);
  input_ = input[1];
  output_ = output[0];

  for (;;) {
    const std::string line = readLine();
    if (line.starts_with("steady ")) {
      steady_.push_back(std::atoi(line.c_str() + 7));
    } else {
      EXPECT_EQ(line, "ready") << "the crowd did not come together";
      break;
    }
  }
}

Crowd::~Crowd() {
  close(input_);
  EXPECT_EQ(readLine(), "lost 0") << "processes that nobody chose were ended";
  close(output_);
  waitpid(pid_, nullptr, 0);
}

std::string Crowd::readLine() const {
  std::string line;
  char byte = 0;
  while (read(output_, &byte, 1) == 1 && byte != '\n') line += byte;
  return line;
}
