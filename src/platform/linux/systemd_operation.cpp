#include "platform/linux/systemd_operation.h"

#include <cerrno>
#include <chrono>
#include <string_view>
#include <utility>

#include "platform/linux/systemd_manager.h"
#include "platform/linux/user_bus.h"

namespace platform {
namespace {

constexpr const char* kBus = "org.freedesktop.DBus";
constexpr const char* kBusPath = "/org/freedesktop/DBus";

/// The text is the manager's own or empty, never that of a system error, which could be taken for
/// the manager's.
ServiceReply replyOf(const BusFailure& failure) {
  return {failure.number != 0 ? failure.number : EIO,
          failure.name.empty() ? "can't talk to the service manager" : failure.text};
}

ServiceReply misunderstood() {
  return {EBADMSG, "the service manager's answer makes no sense"};
}

bool isSentBy(sd_bus_message* message, std::string_view name) {
  const char* sender = sd_bus_message_get_sender(message);
  return sender != nullptr && sender == name;
}

}  // namespace

/// The conversation over one connection about one operation. Calls go to the unique name of the
/// manager's connection, and only signals from it count: anybody could send a signal that a job
/// has ended.
class SystemdOperation::Talk {
 public:
  Talk(std::unique_ptr<UserBus> bus, Verb verb, std::string unit)
      : bus_(std::move(bus)), verb_(verb), unit_(std::move(unit)) {
    listen(std::string("type='signal',sender='") + kBus + "',path='" + kBusPath + "',interface='" +
               kBus + "',member='NameOwnerChanged',arg0='" + ServiceManager::kName + "'",
           noteOwnerChanged, ownerChanged_);
    owner_ = std::make_unique<BusCall>(*bus_, kBus, kBusPath, kBus, "GetNameOwner", "s",
                                       ServiceManager::kName);
  }

  std::optional<ServiceReply> carryOn() {
    BusFailure failure;
    std::optional<ServiceReply> reply;
    const auto isOver = [&] { return (reply = ended()).has_value(); };
    // 20 ms are enough to send the order over a quick bus; the rest may take as long as it does.
    constexpr std::chrono::milliseconds kLook(20);
    const auto progress = isTaken()
                              ? bus_->catchUp(isOver, failure)
                              : bus_->waitUntil([&] { return isOver() || isTaken(); },
                                                std::chrono::steady_clock::now() + kLook, failure);
    if (progress == UserBus::Progress::lost) return replyOf(failure);
    return reply;
  }

  /// Whether the bus has accepted the connection; nothing is sent before.
  bool isGreeted() const { return sd_bus_is_ready(bus_->get()) > 0; }

 private:
  template <typename... Arguments>
  std::unique_ptr<BusCall> ask(const char* member, const char* signature = "",
                               Arguments... arguments) {
    return std::make_unique<BusCall>(*bus_, manager_.c_str(), ServiceManager::kPath,
                                     ServiceManager::kInterface, member, signature, arguments...);
  }

  void listen(const std::string& rule, sd_bus_message_handler_t handler, BusSlot& slot) {
    sd_bus_slot* raw = nullptr;
    // If the bus refuses the rule, sd-bus closes the connection.
    if (sd_bus_add_match_async(bus_->get(), &raw, rule.c_str(), handler, nullptr, this) < 0) {
      isDeaf_ = true;
    }
    slot.reset(raw);
  }

  static int noteOwnerChanged(sd_bus_message* message, void* self, sd_bus_error*) {
    auto& talk = *static_cast<Talk*>(self);
    const char* before = nullptr;
    if (isSentBy(message, kBus) && !talk.manager_.empty() &&
        sd_bus_message_read(message, "sss", nullptr, &before, nullptr) > 0 &&
        talk.manager_ == before) {
      talk.managerIsGone_ = true;
    }
    return 0;
  }

  static int noteJobRemoved(sd_bus_message* message, void* self, sd_bus_error*) {
    auto& talk = *static_cast<Talk*>(self);
    const char* job = nullptr;
    const char* result = nullptr;
    // The manager answers the order with the job's path before it reports the job's end.
    if (talk.isTaken() && isSentBy(message, talk.manager_) &&
        sd_bus_message_read(message, "uoss", nullptr, &job, nullptr, &result) > 0 &&
        talk.jobOf(*talk.order_) == job) {
      talk.result_ = result;
    }
    return 0;
  }

  bool isTaken() const { return order_ && order_->isAnswered(); }

  /// The job that answers an order; none when the order was refused or the answer makes no sense.
  static std::optional<std::string> jobOf(const BusCall& order) {
    const char* job = nullptr;
    sd_bus_message* answer = order.answer();
    if (answer == nullptr || sd_bus_message_rewind(answer, 1) < 0 ||
        sd_bus_message_read(answer, "o", &job) <= 0) {
      return std::nullopt;
    }
    return job;
  }

  /// How the operation ended, if it has; else asks the next question.
  std::optional<ServiceReply> ended() {
    if (isDeaf_) return ServiceReply{ENOMEM, "can't listen to the service manager"};
    if (result_) return replyOfJob(*result_);
    if (managerIsGone_) return ServiceReply{ECONNRESET, "the service manager has gone"};
    if (manager_.empty()) return owner_->isAnswered() ? meet() : std::nullopt;
    if (order_) return isTaken() ? refusal() : std::nullopt;
    if (!subscription_->isAnswered() || (state_ && !state_->isAnswered())) return std::nullopt;
    return giveOrder();
  }

  std::optional<ServiceReply> meet() {
    sd_bus_message* answer = owner_->answer();
    if (answer == nullptr) return replyOf(owner_->failure());
    const char* name = nullptr;
    if (sd_bus_message_read(answer, "s", &name) <= 0) return misunderstood();
    manager_ = name;
    listen("type='signal',sender='" + manager_ + "',path='" + ServiceManager::kPath +
               "',interface='" + ServiceManager::kInterface + "',member='JobRemoved'",
           noteJobRemoved, jobRemoved_);
    // The manager only sends signals about jobs while somebody is subscribed.
    subscription_ = ask("Subscribe");
    if (verb_ == Verb::stop) state_ = ask("ListUnitsByNames", "as", 1, unit_.c_str());
    return std::nullopt;
  }

  std::optional<ServiceReply> giveOrder() {
    if (subscription_->answer() == nullptr) return replyOf(subscription_->failure());
    if (state_) {
      if (state_->answer() == nullptr) return replyOf(state_->failure());
      const auto active = activeState(state_->answer());
      if (!active) return misunderstood();
      if (active->empty() || *active == "inactive" || *active == "failed") {
        return notFound();  // stopping these would be "done" too, but there was nothing to stop
      }
    }
    order_ = ask(verb_ == Verb::stop ? "StopUnit" : "StartUnit", "ss", unit_.c_str(), "replace");
    return std::nullopt;
  }

  /// The active state of the only unit in the list; "" for an empty list.
  static std::optional<std::string> activeState(sd_bus_message* list) {
    const char* state = nullptr;
    if (sd_bus_message_enter_container(list, 'a', ServiceManager::kListedUnit) < 0 ||
        sd_bus_message_read(list, ServiceManager::kListedUnit, nullptr, nullptr, nullptr, &state,
                            nullptr, nullptr, nullptr, nullptr, nullptr, nullptr) < 0) {
      return std::nullopt;
    }
    return state == nullptr ? "" : state;
  }

  std::optional<ServiceReply> refusal() const {
    if (order_->answer() == nullptr) {
      const bool hasGone = order_->failure().name == ServiceManager::kNoSuchUnit;
      return verb_ == Verb::stop && hasGone ? notFound() : replyOf(order_->failure());
    }
    if (!jobOf(*order_)) return misunderstood();
    return std::nullopt;
  }

  ServiceReply notFound() const { return {ESRCH, "Could not find an active unit " + unit_}; }

  ServiceReply replyOfJob(const std::string& result) const {
    if (result == "done") return {};
    return {EIO, "The job for " + unit_ + " ended: " + result};
  }

  std::unique_ptr<UserBus> bus_;
  Verb verb_;
  std::string unit_;
  bool isDeaf_ = false;
  bool managerIsGone_ = false;
  std::string manager_;  ///< its connection's own name, once that is known
  std::unique_ptr<BusCall> owner_;
  std::unique_ptr<BusCall> subscription_;
  std::unique_ptr<BusCall> state_;  ///< when it is to stop
  std::unique_ptr<BusCall> order_;
  std::optional<std::string> result_;
  BusSlot jobRemoved_;
  BusSlot ownerChanged_;
};

SystemdOperation::SystemdOperation(Verb verb, const std::string& label,
                                   std::function<std::vector<std::string>()> sockets)
    : verb_(verb), unit_(label + ".service"), sockets_(std::move(sockets)) {}

SystemdOperation::~SystemdOperation() = default;

std::optional<ServiceReply> SystemdOperation::poll() {
  if (reply_) return reply_;
  if (!talk_) {
    BusFailure failure;
    auto bus = UserBus::open(sockets_(), failure);
    if (bus) {
      talk_ = std::make_unique<Talk>(std::move(bus), verb_, unit_);
    } else if (failure.number != EAGAIN) {
      reply_ = replyOf(failure);
    }
  }
  if (talk_) {
    const bool isGreeted = talk_->isGreeted();
    auto reply = talk_->carryOn();
    if (reply) talk_.reset();
    // sd-bus gives up after 90 seconds on a bus that does not accept the connection. The manager
    // has not been told of the order then, so it is tried again.
    const bool wasNeverTold = reply && reply->status == ETIMEDOUT && !isGreeted;
    if (!wasNeverTold) reply_ = std::move(reply);
  }
  return reply_;
}

}  // namespace platform
