#include "platform/linux/job_control.h"

#include <cerrno>
#include <optional>

namespace platform {
namespace {

std::string unitOf(const std::string& label) {
  return label + ".service";
}

ServiceReply replyOf(const BusFailure& failure) {
  return {failure.number != 0 ? failure.number : EIO, failure.text};
}

ServiceReply replyOf(const std::optional<std::string>& result, const std::string& label,
                     const BusFailure& failure) {
  if (!result) return replyOf(failure);
  if (*result == "done") return {};
  return {EIO, "The job for " + unitOf(label) + " ended: " + *result};
}

}  // namespace

ServiceReply stopJob(UserManager& manager, const std::string& label,
                     std::chrono::milliseconds limit) {
  const Deadline deadline = std::chrono::steady_clock::now() + limit;
  BusFailure failure;
  const auto state = manager.activeState(unitOf(label), deadline, failure);
  if (!state) return replyOf(failure);
  if (state->empty() || *state == "inactive" || *state == "failed") {
    // Stopping these would be "done" too, but there was nothing to stop.
    return {ESRCH, "Could not find an active unit " + unitOf(label)};
  }
  const auto result = manager.stop(unitOf(label), deadline, failure);
  return replyOf(result, label, failure);
}

ServiceReply startJob(UserManager& manager, const std::string& label,
                      std::chrono::milliseconds limit) {
  BusFailure failure;
  const auto result =
      manager.start(unitOf(label), std::chrono::steady_clock::now() + limit, failure);
  return replyOf(result, label, failure);
}

}  // namespace platform
