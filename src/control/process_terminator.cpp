#include "control/process_terminator.h"

#include <cerrno>
#include <system_error>

#include "platform/signals.h"
#include "platform/users.h"
#include "platform/words.h"

namespace ProcessTerminator {
namespace {

using Answer = std::pair<bool, std::string>;

std::string pidText(std::int32_t pid) {
  return "PID " + std::to_string(pid);
}

std::string systemText(int error) {
  return std::generic_category().message(error);
}

Answer failed(std::int32_t pid, int error) {
  return {false, "Failed " + pidText(pid) + ": " + systemText(error)};
}

Answer refusedBySystem(std::int32_t pid, int error) {
  const platform::Words& words = platform::words();
  return {false, std::string(words.system) + " refused the signal (" + systemText(error) +
                     ").\n\n" + pidText(pid) + " is protected " + std::string(words.protectedBy) +
                     ".\n\nFor Docker: quit Docker Desktop from the " +
                     std::string(words.statusArea) +
                     " whale icon.\n"
                     "For system daemons: leave them alone — they are not ordinary apps."};
}

Answer ownedByRoot(std::int32_t pid) {
  const platform::Words& words = platform::words();
  return {false, pidText(pid) + " runs as root, so " + std::string(words.system) +
                     " blocks Force Quit from a normal app.\n\n" + std::string(words.dockerHelper) +
                     "\n\nWhat to do instead:\n• Quit Docker Desktop from its whale menu (" +
                     std::string(words.statusArea) + "), or\n" +
                     std::string(words.dockerAlternative) +
                     "\n\nVorda cannot send root processes SIGKILL without an admin password "
                     "prompt."};
}

Answer ownedByOther(std::int32_t pid, const std::string& owner) {
  return {false, pidText(pid) + " is owned by " + owner +
                     ", not your account. Vorda can only quit your own processes."};
}

/// The answer for a process of another user: the same for quit and force quit.
Answer foreignOwner(std::int32_t pid, std::uint32_t uid) {
  const std::string name = platform::nameOfUser(uid);
  return uid == 0 || name == "root" ? ownedByRoot(pid) : ownedByOther(pid, name);
}

Answer outcome(std::int32_t pid, bool force, int error) {
  switch (error) {
    case 0:
      return {true, (force ? "Force-quit " : "Quit ") + pidText(pid)};
    case EACCES:
    case EPERM:
      return refusedBySystem(pid, error);
    case ESRCH:
      return alreadyGone(pid);
    default:
      return failed(pid, error);
  }
}

/// To kill(), 0 and negative pids mean groups of processes.
Answer notOneProcess(std::int32_t pid) {
  return failed(pid, EINVAL);
}

using Owner = std::optional<std::uint32_t>;

Answer terminate(std::int32_t pid, bool force, const platform::SignalTarget& target,
                 const Owner& owner) {
  if (owner && *owner != platform::ownUid()) return foreignOwner(pid, *owner);
  return outcome(pid, force,
                 target.send(force ? platform::Signal::forceQuit : platform::Signal::quit));
}

}  // namespace

std::pair<bool, std::string> alreadyGone(std::int32_t pid) {
  return {true, pidText(pid) + " already gone"};
}

std::pair<bool, std::string> terminate(std::int32_t pid, bool force) {
  if (pid < 1) return notOneProcess(pid);
  const platform::SignalTarget target(pid);
  return terminate(pid, force, target, target.effectiveUid());
}

std::pair<bool, std::string> terminate(std::int32_t pid, bool force,
                                       std::optional<std::uint64_t> identity) {
  if (pid < 1) return notOneProcess(pid);
  const platform::SignalTarget target(pid);
  // The identity is checked last. Where the system can't hold on to a process, as little time as
  // possible may pass between this check and the signal; and if the pid still belongs to the
  // process that was meant, it also did when its owner was read.
  const Owner owner = target.effectiveUid();
  if (!identity || target.identity() != identity) return alreadyGone(pid);
  return terminate(pid, force, target, owner);
}

}  // namespace ProcessTerminator
