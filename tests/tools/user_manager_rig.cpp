#include "tools/user_manager_rig.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <fstream>

#include "tools/joined.h"

UserManagerRig::UserManagerRig()
    : home_("HOME", (folder_ / "home").c_str()),
      config_("XDG_CONFIG_HOME", nullptr),
      runtime_("XDG_RUNTIME_DIR", (folder_ / "run").c_str()),
      bus_("DBUS_SESSION_BUS_ADDRESS", ("unix:path=" + (folder_ / "run/bus").string()).c_str()) {
  start();
}

UserManagerRig::~UserManagerRig() {
  end();
}

void UserManagerRig::start() {
  int input[2];
  int output[2];
  ASSERT_EQ(pipe2(input, O_CLOEXEC), 0);
  ASSERT_EQ(pipe2(output, O_CLOEXEC), 0);
  std::string script = USER_MANAGER_RIG;
  std::string folder = folder_.path();
  char* arguments[] = {script.data(), folder.data(), nullptr};

  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, input[0], STDIN_FILENO);
  posix_spawn_file_actions_adddup2(&actions, output[1], STDOUT_FILENO);
  posix_spawn_file_actions_adddup2(&actions, output[1], STDERR_FILENO);
  const int error = posix_spawn(&script_, script.c_str(), &actions, nullptr, arguments, environ);
  posix_spawn_file_actions_destroy(&actions);
  close(input[0]);
  close(output[1]);
  standardInput_ = input[1];
  ASSERT_EQ(error, 0) << script;

  // It says one line: "ready", or why not. It has a bound of its own.
  std::string line;
  char byte = 0;
  while (read(output[0], &byte, 1) == 1 && byte != '\n') line += byte;
  close(output[0]);
  reason_ = line == "ready" ? "" : line;
}

void UserManagerRig::end() {
  if (script_ < 0) return;
  close(standardInput_);
  waitpid(script_, nullptr, 0);
  script_ = -1;
}

void UserManagerRig::restart() {
  end();
  start();
}

std::string UserManagerRig::addService(std::string_view name, std::string_view lines) const {
  const std::string file = "home/.config/systemd/user/" + std::string(name) + ".service";
  folder_.write(file, "[Service]\n" + std::string(lines) + "\n");
  return folder_ / file;
}

namespace {

pid_t numberIn(const std::filesystem::path& file) {
  pid_t number = 0;
  std::ifstream(file) >> number;
  return number;
}

void sendTo(pid_t pid, int signal) {
  ASSERT_GT(pid, 1);
  EXPECT_EQ(kill(pid, signal), 0);
}

/// The bus is a child of the manager's.
pid_t busOf(pid_t manager) {
  const std::string task = std::to_string(manager);
  std::ifstream children("/proc/" + task + "/task/" + task + "/children");
  for (pid_t child = 0; children >> child;) {
    std::string name;
    std::ifstream("/proc/" + std::to_string(child) + "/comm") >> name;
    if (name.starts_with("dbus-")) return child;
  }
  return 0;
}

}  // namespace

pid_t UserManagerRig::manager() const {
  return numberIn(folder_ / "manager.pid");
}

void UserManagerRig::pause() const {
  sendTo(manager(), SIGSTOP);
}

void UserManagerRig::resume() const {
  sendTo(manager(), SIGCONT);
}

void UserManagerRig::pauseBus() const {
  sendTo(busOf(manager()), SIGSTOP);
}

void UserManagerRig::resumeBus() const {
  sendTo(busOf(manager()), SIGCONT);
}

std::string execStart(const std::vector<std::string>& command) {
  return "ExecStart=" + joined(command);
}
