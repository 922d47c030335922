#include "tools/puppet.h"

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <bit>
#include <csignal>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <iterator>
#include <sstream>

#include "tools/argument_pointers.h"
#include "tools/child_process.h"
#include "tools/forked.h"

namespace {

/// Writes a title over this process's arguments.
void writeTitle(const std::string& title) {
  std::ifstream file("/proc/self/stat");
  std::string stat(std::istreambuf_iterator<char>(file), {});
  std::istringstream fields(stat.substr(stat.rfind(')') + 2));
  std::string field;
  constexpr int kArgumentsStart = 48;
  constexpr int kFirst = 3;
  for (int i = kFirst; i < kArgumentsStart; ++i) fields >> field;
  std::uintptr_t begin = 0;
  std::uintptr_t end = 0;
  fields >> begin >> end;
  char* const arguments = std::bit_cast<char*>(begin);
  const std::size_t size = end - begin;
  std::memset(arguments, 0, size);
  std::memcpy(arguments, title.data(), std::min(title.size(), size - 1));
}

void keepMoreBusy() {
  constexpr std::size_t kMore = 8 << 20;
  void* memory = mmap(nullptr, kMore, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (memory == MAP_FAILED) _exit(1);
  std::memset(memory, 1, kMore);
}

void dieWithTheTest() {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
}

/// Up to the next NUL.
std::string readText(int fd) {
  std::string text;
  for (char c = 0; read(fd, &c, 1) == 1 && c != '\0';) text += c;
  return text;
}

/// It says "ready" then. `arguments`: as many lines.
void becomeProgram(const std::string& arguments) {
  std::istringstream lines(arguments);
  std::vector<std::string> list;
  for (std::string line; std::getline(lines, line);) list.push_back(line);
  auto command = playProcess({}, list);
  execv(command.front().c_str(), argumentPointers(command).data());
}

}  // namespace

Puppet::Puppet(pid_t pid) {
  if (pipe(orders_) != 0 || pipe(answers_) != 0) return;
  pid_ = forkAs(pid);
  if (pid_ == 0) obey();
  close(orders_[0]);
  close(answers_[1]);
}

Puppet::~Puppet() {
  end();
  close(orders_[1]);
  close(answers_[0]);
}

void Puppet::rewriteTitle() {
  tell(Order::rewriteTitle);
}

void Puppet::grow() {
  tell(Order::grow);
}

void Puppet::changeOwner() {
  tell(Order::changeOwner);
}

void Puppet::execute(const std::vector<std::string>& arguments) {
  std::string lines;
  for (const auto& argument : arguments) lines += argument + "\n";
  tell(Order::execute, lines);
  obeys_ = false;
}

void Puppet::die() const {
  if (pid_ < 1) return;
  kill(pid_, SIGKILL);
  siginfo_t info = {};
  waitid(P_PID, static_cast<id_t>(pid_), &info, WEXITED | WNOWAIT);
}

void Puppet::end() {
  if (pid_ < 1) return;
  die();
  waitpid(pid_, nullptr, 0);
  pid_ = -1;
}

void Puppet::tell(Order order, const std::string& what) {
  ASSERT_TRUE(obeys());
  const std::string message = static_cast<char>(order) + what + '\0';
  ASSERT_EQ(write(orders_[1], message.data(), message.size()),
            static_cast<ssize_t>(message.size()));
  char answer[6];
  ASSERT_GT(read(answers_[0], answer, sizeof answer), 0);
}

void Puppet::obey() {
  dieWithTheTest();
  dup2(answers_[1], STDOUT_FILENO);
  int titles = 0;
  Order order{};
  while (read(orders_[0], &order, 1) == 1) {
    const std::string what = readText(orders_[0]);
    switch (order) {
      case Order::rewriteTitle:
        writeTitle("puppet: no " + std::to_string(++titles));
        break;
      case Order::grow:
        keepMoreBusy();
        break;
      case Order::changeOwner:
        becomeStranger();
        dieWithTheTest();  // the change cleared that
        break;
      case Order::execute:
        becomeProgram(what);
        break;
    }
    if (write(STDOUT_FILENO, "done\n", 5) != 5) break;
  }
  _exit(0);
}
