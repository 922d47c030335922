#include "ui/unfinished_quits.h"

#include <algorithm>
#include <optional>

#include "platform/processes.h"
#include "text/display_line.h"
#include "ui/name_limits.h"

namespace {

using platform::ProcessState;

constexpr std::uint64_t kSecond = 1'000'000'000;  // in nanoseconds
constexpr std::uint64_t kMinute = 60 * kSecond;
constexpr std::uint64_t kHour = 60 * kMinute;
constexpr std::size_t kMostLines = 3;

/// The state of exactly this process; none when it is gone.
std::optional<ProcessState> stateOf(const ProcessReference& process) {
  // The identity is read after the state: if it is still the same, the state was that of this
  // process.
  const auto state = platform::processState(process.pid);
  const auto identity = platform::processIdentity(process.pid);
  const bool isSame = identity && identity == process.identity;
  if (!isSame || state == ProcessState::ended) return std::nullopt;
  return state.value_or(ProcessState::runs);
}

/// Never negative, because a Mac's clock can be set back.
std::uint64_t ageOf(std::uint64_t askedAt) {
  const std::uint64_t now = platform::processClock();
  return now > askedAt ? now - askedAt : 0;
}

std::string ageText(std::uint64_t age) {
  if (age < kMinute) return std::to_string(age / kSecond) + " s";
  if (age < kHour) return std::to_string(age / kMinute) + " min";
  return std::to_string(age / kHour) + " h";
}

}  // namespace

bool UnfinishedQuits::add(const ProcessReference& process, const std::string& name) {
  forget(process);
  const auto state = stateOf(process);
  if (!state) return false;
  requests_.push_back({.process = process,
                       .name = NameLimits::cut(text::displayName(name), NameLimits::kProcessName),
                       .askedAt = platform::processClock(),
                       .isStopped = state == ProcessState::stopped});
  return true;
}

void UnfinishedQuits::runOut(const ProcessReference& process, std::uint64_t askedAt) {
  for (Request& request : requests_) {
    if (request.process == process && request.askedAt == askedAt) request.isOver = true;
  }
}

void UnfinishedQuits::forget(const ProcessReference& process) {
  std::erase_if(requests_, [&](const Request& one) { return one.process == process; });
}

void UnfinishedQuits::update() {
  std::erase_if(requests_, [](Request& request) {
    const auto state = stateOf(request.process);
    request.isStopped = state == ProcessState::stopped;
    return !state;
  });
}

std::uint64_t UnfinishedQuits::askedAt(const ProcessReference& process) const {
  const Request* request = find(process);
  return request == nullptr ? 0 : request->askedAt;
}

std::string UnfinishedQuits::notice() const {
  std::string lines;
  std::size_t count = 0;
  for (auto request = requests_.rbegin(); request != requests_.rend(); ++request) {
    if (!request->isOver || ageOf(request->askedAt) >= kMinute || count == kMostLines) continue;
    if (count++ > 0) lines += "\n";
    const std::string pid = " (pid " + std::to_string(request->process.pid) + ")";
    lines += request->name;
    lines += request->isStopped ? " is stopped" + pid + ": it takes the request when it goes on."
                                : " is still running" + pid + ".";
    lines += " Force Quit may end it.";
  }
  return lines;
}

std::vector<std::string> UnfinishedQuits::linesOf(const ProcessReference& process) const {
  const Request* request = find(process);
  if (request == nullptr) return {};
  std::vector<std::string> lines{"Asked to quit " + ageText(ageOf(request->askedAt)) + " ago"};
  if (request->isStopped) lines.emplace_back("It is stopped: it takes the request when it goes on");
  return lines;
}

const UnfinishedQuits::Request* UnfinishedQuits::find(const ProcessReference& process) const {
  const auto found = std::ranges::find(requests_, process, &Request::process);
  return found == requests_.end() ? nullptr : &*found;
}
