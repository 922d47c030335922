#include "platform/signals.h"

#include <cerrno>

namespace platform {

SignalTarget::SignalTarget(std::int32_t pid) : pid_(pid), handle_(-1) {}

SignalTarget::~SignalTarget() = default;

std::optional<std::uint32_t> SignalTarget::effectiveUid() const {
  return std::nullopt;
}

std::optional<std::uint64_t> SignalTarget::identity() const {
  return std::nullopt;
}

int SignalTarget::send(Signal) const {
  return pid_ < 1 ? EINVAL : ENOSYS;
}

}  // namespace platform
