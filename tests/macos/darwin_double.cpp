#include "macos/darwin_double.h"

#include <libproc.h>
#include <pwd.h>
#include <sys/sysctl.h>
#include <sys/syslimits.h>
#include <sys/wait.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>

namespace darwin {
namespace {

Kernel scripted;

int fail(int error) {
  errno = error;
  return -1;
}

/// As sysctl hands a value out: no buffer asks for its size, a short one is refused.
int handOut(const void* value, std::size_t size, void* buffer, std::size_t* length) {
  if (buffer != nullptr) {
    if (*length < size) return fail(ENOMEM);
    std::memcpy(buffer, value, size);
  }
  *length = size;
  return 0;
}

int argumentsOf(std::int32_t pid, void* buffer, std::size_t* length) {
  Process* process = scripted.find(pid);
  if (process == nullptr) return fail(EINVAL);
  const std::string& block = process->argumentBlock;
  if (buffer == nullptr) {
    *length = block.empty() ? 512 : block.size();
    if (scripted.whenBlockWasMeasured) scripted.whenBlockWasMeasured(*process);
    return 0;
  }
  constexpr std::size_t kCount = sizeof(std::int32_t);
  if (block.empty() || *length <= kCount || *length - kCount > ARG_MAX) return fail(EINVAL);
  if (*length >= block.size()) return handOut(block.data(), block.size(), buffer, length);
  // A short buffer gets argc, and of the rest the end.
  auto* bytes = static_cast<char*>(buffer);
  const std::size_t room = *length - kCount;
  std::memcpy(bytes, block.data(), kCount);
  std::memcpy(bytes + kCount, block.data() + block.size() - room, room);
  return 0;
}

int recordOf(std::int32_t pid, void* buffer, std::size_t* length) {
  if (scripted.refusesRecords) return fail(EPERM);
  const Process* process = scripted.find(pid);
  if (process == nullptr) {
    *length = 0;  // a success that fills nothing
    return 0;
  }
  constexpr std::uint64_t kSecond = 1'000'000;
  kinfo_proc record = {};
  record.kp_proc.p_pid = pid;
  record.kp_proc.p_stat = process->state;
  record.kp_proc.p_starttime.tv_sec = static_cast<time_t>(process->startTime / kSecond);
  record.kp_proc.p_starttime.tv_usec = static_cast<suseconds_t>(process->startTime % kSecond);
  record.kp_eproc.e_ucred.cr_uid = process->effectiveUid;
  return handOut(&record, sizeof record, buffer, length);
}

bool isNamed(const int* name, unsigned length, std::initializer_list<int> wanted) {
  return length >= wanted.size() && std::equal(wanted.begin(), wanted.end(), name);
}

/// Whether the test started this process itself.
bool isOwnChild(pid_t pid) {
  siginfo_t info = {};
  return pid > 0 && waitid(P_PID, static_cast<id_t>(pid), &info, WEXITED | WNOHANG | WNOWAIT) == 0;
}

}  // namespace

Process* Kernel::find(std::int32_t pid) {
  const auto found = std::find_if(processes.begin(), processes.end(),
                                  [pid](const Process& one) { return one.pid == pid; });
  return found == processes.end() ? nullptr : &*found;
}

Kernel& kernel() {
  return scripted;
}

void resetKernel() {
  scripted = {};
  vm_kernel_page_size = 16384;
}

Process process(std::int32_t pid, const std::vector<std::string>& arguments,
                std::uint64_t footprintMB) {
  return {.pid = pid,
          .path = arguments.front(),
          .argumentBlock = argumentBlock(arguments.front(), arguments),
          .footprint = footprintMB << 20};
}

}  // namespace darwin

using darwin::fail;
using darwin::scripted;

extern "C" {

vm_size_t vm_kernel_page_size = 16384;

int proc_listpids(uint32_t type, uint32_t, void* buffer, int buffersize) {
  if (scripted.refusesListing || type != PROC_ALL_PIDS) return fail(EPERM);
  std::vector<std::int32_t> pids = scripted.listedPids;
  for (const auto& process : scripted.processes) pids.push_back(process.pid);
  const auto bytes = static_cast<int>(pids.size() * sizeof(std::int32_t));
  if (buffer == nullptr) return bytes;
  const int handed = std::min(bytes, buffersize);
  std::memcpy(buffer, pids.data(), static_cast<std::size_t>(handed));
  return handed;
}

int proc_pidpath(int pid, void* buffer, uint32_t buffersize) {
  const darwin::Process* process = scripted.find(pid);
  if (process == nullptr || process->path.empty() || process->path.size() >= buffersize) {
    errno = ESRCH;
    return 0;
  }
  std::memcpy(buffer, process->path.c_str(), process->path.size() + 1);
  return static_cast<int>(process->path.size());
}

int proc_pid_rusage(int pid, int flavor, rusage_info_t* buffer) {
  const darwin::Process* process = scripted.find(pid);
  if (process == nullptr) return fail(ESRCH);
  if (flavor != RUSAGE_INFO_V4 || !process->footprint) return fail(EPERM);
  rusage_info_v4 usage = {};
  usage.ri_phys_footprint = *process->footprint;
  std::memcpy(buffer, &usage, sizeof usage);
  return 0;
}

int proc_pidinfo(int pid, int flavor, uint64_t, void* buffer, int buffersize) {
  const darwin::Process* process = scripted.find(pid);
  constexpr int kSize = sizeof(proc_taskinfo);
  if (process == nullptr || flavor != PROC_PIDTASKINFO || !process->resident ||
      buffersize < kSize) {
    errno = EPERM;
    return 0;
  }
  proc_taskinfo task = {};
  task.pti_resident_size = *process->resident;
  std::memcpy(buffer, &task, sizeof task);
  return kSize;
}

int sysctl(int* name, unsigned namelen, void* oldp, size_t* oldlenp, void*, size_t) {
  using darwin::isNamed;
  if (isNamed(name, namelen, {CTL_KERN, KERN_PROCARGS2}) && namelen == 3) {
    return darwin::argumentsOf(name[2], oldp, oldlenp);
  }
  if (isNamed(name, namelen, {CTL_KERN, KERN_PROC, KERN_PROC_PID}) && namelen == 4) {
    return darwin::recordOf(name[3], oldp, oldlenp);
  }
  if (isNamed(name, namelen, {CTL_HW, HW_MEMSIZE}) && namelen == 2) {
    return darwin::handOut(&scripted.installedBytes, sizeof scripted.installedBytes, oldp, oldlenp);
  }
  return fail(ENOENT);
}

mach_port_t mach_host_self(void) {
  return 1;
}

kern_return_t host_statistics64(host_t, host_flavor_t flavor, host_info64_t host_info64_out,
                                mach_msg_type_number_t* host_info64_outCnt) {
  scripted.memoryWordsAsked = *host_info64_outCnt;
  if (scripted.memoryFailure) return *scripted.memoryFailure;
  if (flavor != HOST_VM_INFO64 || *host_info64_outCnt < HOST_VM_INFO64_COUNT) return KERN_FAILURE;
  std::memcpy(host_info64_out, &scripted.pages, sizeof scripted.pages);
  *host_info64_outCnt = HOST_VM_INFO64_COUNT;
  return KERN_SUCCESS;
}

// POSIX calls, which the linker leads here (--wrap) when the edition makes them.

uid_t __wrap_getuid() {
  return scripted.ownUid;
}

pid_t __wrap_getpid() {
  return scripted.ownPid;
}

int __wrap_getpwuid_r(uid_t uid, passwd* entry, char* buffer, size_t size, passwd** result) {
  *result = nullptr;
  const auto found = scripted.loginNames.find(uid);
  if (found == scripted.loginNames.end()) return 0;
  if (found->second.size() >= size) return ERANGE;
  *entry = {};
  entry->pw_uid = uid;
  entry->pw_name = std::strcpy(buffer, found->second.c_str());
  *result = entry;
  return 0;
}

int __real_kill(pid_t pid, int number);

int __wrap_kill(pid_t pid, int number) {
  darwin::Process* process = scripted.find(pid);
  if (process == nullptr) {
    return darwin::isOwnChild(pid) ? __real_kill(pid, number) : fail(ESRCH);
  }
  if (process->killError != 0) return fail(process->killError);
  scripted.signals.push_back({pid, number});
  if (process->ignoresTerm && number == SIGTERM) return 0;
  std::erase_if(scripted.processes, [pid](const auto& one) { return one.pid == pid; });
  return 0;
}
}
