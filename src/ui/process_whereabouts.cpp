#include "ui/process_whereabouts.h"

#include "platform/process_place.h"
#include "platform/processes.h"
#include "scanner/credentials/credential_mask.h"
#include "scanner/vorda_process.h"
#include "text/display_line.h"

namespace {

/// Whether the pid is still this process's. What was asked of the pid before is then never a later
/// process's.
bool isStillThere(const VordaProcess& process) {
  return process.identity && platform::processIdentity(process.pid) == process.identity;
}

}  // namespace

std::string placeOfOthers(const VordaProcess& process) {
  if (!process.isProtected) return {};
  std::string place = platform::placeOfProcess(process.pid);
  return isStillThere(process) ? place : std::string();
}

std::string folderOfOwn(const VordaProcess& process) {
  if (process.isProtected || !process.identity) return {};
  const auto folder = platform::workingFolderOfProcess(process.pid);
  if (!folder || !isStillThere(process)) return {};
  return text::displayName(CredentialMask::maskedLine(*folder));
}
