#include "platform/linux/detached_program.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <string_view>

#include "text/split.h"

namespace platform {
namespace {

/// Everything that starting the program takes. It is prepared before the fork, because nothing may
/// be allocated between fork and exec.
class Spawn {
 public:
  explicit Spawn(const std::string& folder) {
    posix_spawn_file_actions_init(&actions_);
    for (const int fd : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
      posix_spawn_file_actions_addopen(&actions_, fd, "/dev/null", O_RDWR, 0);
    }
    posix_spawn_file_actions_addclosefrom_np(&actions_, STDERR_FILENO + 1);
    if (!folder.empty()) posix_spawn_file_actions_addchdir_np(&actions_, folder.c_str());

    sigset_t none;
    sigset_t all;
    sigemptyset(&none);
    sigfillset(&all);
    posix_spawnattr_init(&attributes_);
    posix_spawnattr_setsigmask(&attributes_, &none);
    posix_spawnattr_setsigdefault(&attributes_, &all);
    posix_spawnattr_setflags(&attributes_,
                             POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
  }
  ~Spawn() {
    posix_spawnattr_destroy(&attributes_);
    posix_spawn_file_actions_destroy(&actions_);
  }
  Spawn(const Spawn&) = delete;
  Spawn& operator=(const Spawn&) = delete;

  int run(const char* program, char* const* arguments) const {
    pid_t pid = 0;
    return posix_spawn(&pid, program, &actions_, &attributes_, arguments, environ);
  }

 private:
  posix_spawn_file_actions_t actions_{};
  posix_spawnattr_t attributes_{};
};

bool isProgram(const std::string& path) {
  struct stat status = {};
  return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
         access(path.c_str(), X_OK) == 0;
}

}  // namespace

std::string findProgram(const std::string& name) {
  if (name.find('/') != std::string::npos) return isProgram(name) ? name : "";
  const char* variable = std::getenv("PATH");
  const std::string_view folders = variable == nullptr ? "/usr/local/bin:/usr/bin:/bin" : variable;
  if (name.empty()) return "";
  for (const std::string_view folder : text::partsOf(folders, ':')) {
    std::string path = std::string(folder) + "/" + name;
    if (isProgram(path)) return path;
  }
  return "";
}

int startDetached(std::vector<std::string> command, const std::string& folder) {
  const std::string program = findProgram(command.front());
  if (program.empty()) return ENOENT;
  std::vector<char*> arguments;
  arguments.reserve(command.size() + 1);
  for (auto& word : command) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  const Spawn spawn(folder);

  // Fork twice: the child in between ends at once, so the program is not our child.
  const pid_t child = fork();
  if (child < 0) return errno;
  if (child == 0) _exit(spawn.run(program.c_str(), arguments.data()));
  int status = 0;
  while (waitpid(child, &status, 0) < 0) {
    if (errno != EINTR) return 0;  // somebody else has reaped it, so we can't know
  }
  return WIFEXITED(status) ? WEXITSTATUS(status) : ECANCELED;
}

}  // namespace platform
