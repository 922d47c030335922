#include "frontends/qt/bus/session_bus.h"

#include <poll.h>
#include <time.h>

#include <QAbstractEventDispatcher>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <utility>

namespace {

using std::chrono::microseconds;
using std::chrono::milliseconds;
using std::chrono::steady_clock;

/// How many messages are handled before the event loop has its turn: somebody may send them faster
/// than they can be handled.
constexpr int kMessagesAtOnce = 100;

/// The clock that sd_bus_get_timeout uses.
std::uint64_t monotonicMicroseconds() {
  timespec now = {};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return static_cast<std::uint64_t>(now.tv_sec) * 1000000 +
         static_cast<std::uint64_t>(now.tv_nsec) / 1000;
}

/// The bus's address in the environment, which can be hidden.
class BusAddress {
 public:
  void show() {
    if (!std::exchange(hidden_, false)) return;
    if (address_) {
      setenv(kVariable, address_->c_str(), 1);
    } else {
      unsetenv(kVariable);
    }
  }
  /// Qt asks the bus for things of its own, and would wait for one that does not answer for half a
  /// minute and more.
  void hide() {
    hidden_ = true;
    setenv(kVariable, "disabled:", 1);
  }

 private:
  static constexpr const char* kVariable = "DBUS_SESSION_BUS_ADDRESS";

  static std::optional<std::string> atStart() {
    const char* address = std::getenv(kVariable);
    return address == nullptr ? std::nullopt : std::optional<std::string>(address);
  }

  std::optional<std::string> address_ = atStart();
  bool hidden_ = false;
};

}  // namespace

std::unique_ptr<SessionBus> SessionBus::open(milliseconds patience) {
  static BusAddress address;
  address.show();
  auto bus = greeted(patience);
  if (!bus) address.hide();
  return bus;
}

std::unique_ptr<SessionBus> SessionBus::greeted(milliseconds patience) {
  sd_bus* raw = nullptr;
  if (sd_bus_open_user(&raw) < 0) return nullptr;
  std::unique_ptr<SessionBus> bus(new SessionBus(BusPtr(raw)));
  const auto isReady = [raw] { return sd_bus_is_ready(raw) > 0; };
  return bus->waitUntil(isReady, patience) ? std::move(bus) : nullptr;
}

SessionBus::~SessionBus() = default;

bool SessionBus::waitUntil(const std::function<bool()>& done, milliseconds patience) {
  const auto deadline = steady_clock::now() + patience;
  while (!done()) {
    const int worked = sd_bus_process(get(), nullptr);
    if (worked < 0) return false;
    if (worked > 0) continue;
    const auto left = std::chrono::duration_cast<microseconds>(deadline - steady_clock::now());
    if (left.count() <= 0) return false;
    const int woken = sd_bus_wait(get(), static_cast<std::uint64_t>(left.count()));
    if (woken < 0 && woken != -EINTR) return false;
  }
  return true;
}

void SessionBus::serve() {
  const int fd = sd_bus_get_fd(get());
  readable_ = std::make_unique<QSocketNotifier>(fd, QSocketNotifier::Read);
  writable_ = std::make_unique<QSocketNotifier>(fd, QSocketNotifier::Write);
  timeout_.setSingleShot(true);
  connect(readable_.get(), &QSocketNotifier::activated, this, &SessionBus::process);
  connect(writable_.get(), &QSocketNotifier::activated, this, &SessionBus::process);
  connect(&timeout_, &QTimer::timeout, this, &SessionBus::process);
  // Sends what anybody has queued in the meantime before the event loop sleeps.
  connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this,
          &SessionBus::process);
}

void SessionBus::process() {
  // A handler may run an event loop of its own (an alert does), which gets here again.
  if (processing_ || lost_) return;
  processing_ = true;
  int worked = 1;
  for (int i = 0; worked > 0 && i < kMessagesAtOnce; ++i) worked = sd_bus_process(get(), nullptr);
  processing_ = false;

  if (worked < 0 || sd_bus_is_open(get()) <= 0) {
    lost_ = true;
    readable_.reset();
    writable_.reset();
    timeout_.stop();
    Q_EMIT lost();
    return;
  }
  watchForMore();
  if (worked > 0) timeout_.start(0);
}

void SessionBus::watchForMore() {
  const int events = sd_bus_get_events(get());
  readable_->setEnabled((events & POLLIN) != 0);
  writable_->setEnabled((events & POLLOUT) != 0);

  std::uint64_t due = UINT64_MAX;
  sd_bus_get_timeout(get(), &due);
  if (due == UINT64_MAX) {
    timeout_.stop();
    return;
  }
  const std::uint64_t now = monotonicMicroseconds();
  timeout_.start(milliseconds(due <= now ? 0 : (due - now) / 1000 + 1));
}
