#include "soak/led_program.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdlib>

LedProgram::LedProgram(const Preparation& prepare) {
  int input[2];
  int output[2];
  EXPECT_EQ(pipe2(input, O_CLOEXEC), 0);
  EXPECT_EQ(pipe2(output, O_CLOEXEC), 0);
  pid_ = fork();
  EXPECT_GE(pid_, 0);
  if (pid_ == 0) {
    dup2(input[0], STDIN_FILENO);
    dup2(output[1], STDOUT_FILENO);
    const bool isPrepared = !prepare || prepare();
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (isPrepared) execl(MENU_PROGRAM, MENU_PROGRAM, nullptr);
    _exit(127);
  }
  close(input[0]);
  close(output[1]);
  input_ = input[1];
  output_ = output[0];
}

LedProgram::~LedProgram() {
  close(input_);  // this ends it
  close(output_);
  int status = 0;
  pid_t ended = 0;
  constexpr int kPatience = 3000;
  for (int i = 0; i < kPatience && ended == 0; ++i) {
    ended = waitpid(pid_, &status, WNOHANG);
    if (ended == 0) usleep(10'000);
  }
  if (ended == 0) {
    kill(pid_, SIGKILL);
    waitpid(pid_, &status, 0);
  }
  EXPECT_EQ(status, 0) << "how the program ended";
}

bool LedProgram::readLine(std::string& line) {
  constexpr int kPatience = 60'000;  // milliseconds
  for (;;) {
    if (const auto end = heard_.find('\n'); end != std::string::npos) {
      line = heard_.substr(0, end);
      heard_.erase(0, end + 1);
      return true;
    }
    std::array<char, 65536> bytes{};
    pollfd waiting{output_, POLLIN, 0};
    if (poll(&waiting, 1, kPatience) <= 0) return false;
    const ssize_t count = read(output_, bytes.data(), bytes.size());
    if (count <= 0) return false;
    heard_.append(bytes.data(), static_cast<std::size_t>(count));
  }
}

LedProgram::Answer LedProgram::step(const std::string& line) {
  Answer answer;
  const std::string sent = line + "\n";
  if (write(input_, sent.data(), sent.size()) != static_cast<ssize_t>(sent.size())) return answer;
  for (std::string heard; readLine(heard);) {
    if (heard == "done") {
      answer.isWhole = true;
      break;
    }
    if (heard.starts_with("process ")) answer.pids.insert(std::atoi(heard.c_str() + 8));
    if (heard.starts_with("alert ")) answer.alerts.push_back(heard.substr(6));
    if (heard.starts_with("| ")) answer.menu += heard.substr(2) + "\n";
  }
  return answer;
}
