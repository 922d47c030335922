#include "soak/quit_storm.h"

#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cmath>
#include <csignal>
#include <cstdio>
#include <optional>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "soak/own_world.h"
#include "soak/quit_tally.h"

namespace {

using QuitWay = QuitMenu::Way;
using Clock = std::chrono::steady_clock;
using Call = CallGate::Call;

CallGate::Answer tellAll(const Call&, const CallSubject&) {
  return std::nullopt;
}

/// Linux 5.3 to 6.8: all pidfds have one inode.
CallGate::Answer refuseUniqueInodes(const Call& call, const CallSubject& subject) {
  return call.number == SYS_fstatfs && subject.file == "pidfd" ? CallGate::Answer(-ENOSYS)
                                                               : std::nullopt;
}

/// Linux before 5.1, and sandboxes that were written before.
CallGate::Answer refusePidfds(const Call& call, const CallSubject&) {
  const bool isOfPidfds = call.number == SYS_pidfd_open || call.number == SYS_pidfd_send_signal;
  return isOfPidfds ? CallGate::Answer(-ENOSYS) : std::nullopt;
}

CallGate::Answer refuseIdentities(const Call& call, const CallSubject& subject) {
  if (subject.pid != 0 && subject.file == "stat") return -EACCES;
  return refusePidfds(call, subject);
}

}  // namespace

const std::array<IdentityKernel, 4> kIdentityKernels{{
    {.name = "UniqueInodes", .refusal = tellAll, .refuses = false},
    {.name = "OneInodeForAll", .refusal = refuseUniqueInodes},
    {.name = "NoPidfds", .refusal = refusePidfds, .pinsPids = false},
    {.name = "NoIdentities", .refusal = refuseIdentities, .tells = false, .pinsPids = false},
}};

namespace {

/// What the program and its user do one after the other.
enum class Phase { none, listing, opening, choosing, answering };

/// When the process that is meant ends.
struct Moment {
  const char* name = "";
  QuitWay way = QuitWay::quit;
  Phase phase = Phase::none;
  bool atEachCall = false;  ///< before each call of the phase in turn; else before all of them
  bool late = false;        ///< its successor is started before each later call in turn
  bool inOneTick = false;   ///< both are started in one tick of the kernel's clock
};

constexpr Moment kMoments[] = {
    {.name = "never"},
    {.name = "before the scan", .phase = Phase::opening},
    {.name = "before the scan, anew late", .phase = Phase::opening, .late = true},
    {.name = "during the first scan", .phase = Phase::listing, .atEachCall = true},
    {.name = "during the scan", .phase = Phase::opening, .atEachCall = true},
    {.name = "during the scan, anew late",
     .phase = Phase::opening,
     .atEachCall = true,
     .late = true},
    {.name = "after the scan", .phase = Phase::choosing},
    {.name = "after the scan, anew late", .phase = Phase::choosing, .late = true},
    {.name = "during the click", .phase = Phase::choosing, .atEachCall = true},
    {.name = "during the click, anew late",
     .phase = Phase::choosing,
     .atEachCall = true,
     .late = true},
    {.name = "during the scan, in one tick",
     .phase = Phase::listing,
     .atEachCall = true,
     .inOneTick = true},
    {.name = "after the scan, in one tick", .phase = Phase::opening, .inOneTick = true},
    {.name = "force: never", .way = QuitWay::forceQuit},
    {.name = "force: during the scan",
     .way = QuitWay::forceQuit,
     .phase = Phase::opening,
     .atEachCall = true},
    {.name = "force: during the click",
     .way = QuitWay::forceQuit,
     .phase = Phase::choosing,
     .atEachCall = true},
    {.name = "force: while it asks", .way = QuitWay::forceQuit, .phase = Phase::answering},
    {.name = "force: during the answer",
     .way = QuitWay::forceQuit,
     .phase = Phase::answering,
     .atEachCall = true},
};
constexpr std::size_t kMomentCount = std::size(kMoments);

/// The places of a moment, one after the other, and from the beginning when there are no more.
class Sweep {
 public:
  /// `start`: how many of the places it leaves out the first time.
  Sweep(const Moment& moment, int start) : moment_(moment) {
    restart();
    if (!moment_.atEachCall) return;
    place_.end += start;
    place_.successor += start;
  }

  Interleaving::Place place() const { return place_; }
  bool isWhole() const { return isWhole_; }

  void goOn(const Interleaving::Reached& reached) {
    if (moment_.late && reached.successor) {
      ++place_.successor;
    } else if (moment_.atEachCall && reached.end) {
      ++place_.end;
      place_.successor = place_.end + (moment_.late ? 1 : 0);
    } else {
      restart();
      isWhole_ = true;
    }
  }

 private:
  void restart() {
    place_.end = moment_.atEachCall ? 1 : 0;
    place_.successor = place_.end + (moment_.late ? 1 : 0);
  }

  const Moment& moment_;
  Interleaving::Place place_;
  bool isWhole_ = false;
};

int signalOf(QuitWay way) {
  return way == QuitWay::quit ? SIGTERM : SIGKILL;
}

/// Runs `work`, with its number, in that many pid namespaces at once.
void inWorlds(int worlds, const std::function<void(int)>& work) {
  std::vector<pid_t> children;
  for (int i = 0; i < worlds; ++i) {
    std::fflush(nullptr);
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
      const auto result = resultInOwnPids([&] {
        work(i);
        return testing::Test::HasFailure() ? 1 : 0;
      });
      std::fflush(nullptr);
      _exit(result.value_or(1));
    }
    children.push_back(child);
  }
  for (const pid_t child : children) {
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0) << "what went wrong stands above";
  }
}

}  // namespace

void QuitStorm::SetUp() {
  if (geteuid() != 0) GTEST_SKIP() << "only root can make a pid namespace and choose pids in it";
  if (!resultInOwnPids([] { return 0; })) GTEST_SKIP() << "no pid namespace can be made here";
  const std::string reason = PidRelay::reason();
  if (!reason.empty()) GTEST_SKIP() << reason;
}

namespace {

/// One program, and all that is clicked in it.
class World {
 public:
  World(const IdentityKernel& kernel,
        const std::function<std::unique_ptr<QuitMenu>(CallGate*)>& open, QuitTally* tallies,
        int number)
      : kernel_(kernel),
        relay_(!kernel.tells),
        interleaving_(relay_, kernel.refusal, kernel.pinsPids),
        menu_(open(&interleaving_.gate())),
        tallies_(tallies) {
    for (const Moment& moment : kMoments) sweeps_.emplace_back(moment, number);
    if (menu_) interleaving_.watch(menu_->program());
  }

  /// At least so many rounds, beginning with that moment's; then whole sweeps, if wanted.
  void run(double seconds, std::size_t first, std::size_t rounds, bool wholeSweeps) {
    if (!menu_) return;
    const auto begin = Clock::now();
    for (std::size_t i = 0; !testing::Test::HasFatalFailure(); ++i) {
      const std::chrono::duration<double> past = Clock::now() - begin;
      const bool hasTime = i < rounds || past.count() < seconds;
      if (!hasTime && (!wholeSweeps || sweptAll())) break;
      const std::size_t number = (first + i) % kMomentCount;
      if (hasTime || !sweeps_[number].isWhole()) clickOnce(number);
    }
    EXPECT_EQ(interleaving_.refused() > 0, kernel_.refuses) << "this kernel's peculiarity";
  }

 private:
  bool sweptAll() const {
    return std::all_of(sweeps_.begin(), sweeps_.end(),
                       [](const Sweep& sweep) { return sweep.isWhole(); });
  }

  void clickOnce(std::size_t number) {
    const Moment& moment = kMoments[number];
    Sweep& sweep = sweeps_[number];
    const PidRelay::Names& names = relay_.names();
    reached_ = {};
    relay_.begin(moment.inOneTick);
    // Who waits for a row opens its submenu only where it is.
    bool isThere = during(Phase::listing, moment, sweep, [&] { return menu_->list(names); });
    isThere = isThere &&
              during(Phase::opening, moment, sweep, [&] { return menu_->open(names, moment.way); });
    if (isThere &&
        during(Phase::choosing, moment, sweep, [&] { return menu_->choose(moment.way); })) {
      during(Phase::answering, moment, sweep, [&] {
        menu_->answerYes();
        return true;
      });
    }
    tallies_[number].add({.signal = signalOf(moment.way),
                          .wasMade = isThere,
                          .mustReach = kernel_.tells,
                          .where = std::string(moment.name) + ", " + reached_.where},
                         relay_);
    sweep.goOn(reached_);
  }

  template <typename Work>
  bool during(Phase phase, const Moment& moment, const Sweep& sweep, Work work) {
    if (phase != Phase::listing) menu_->rest();
    if (moment.phase != phase) return work();
    interleaving_.arm(sweep.place());
    const bool result = work();
    reached_ = interleaving_.disarm();
    if (reached_.end && !reached_.successor) relay_.startSuccessor();
    return result;
  }

  const IdentityKernel& kernel_;
  PidRelay relay_;
  Interleaving interleaving_;
  std::unique_ptr<QuitMenu> menu_;
  QuitTally* tallies_;
  std::vector<Sweep> sweeps_;
  Interleaving::Reached reached_;
};

}  // namespace

void QuitStorm::quitAtEachPlace(const IdentityKernel& kernel, const Opening& opening, int worlds,
                                bool wholeSweeps) {
  if (!CallGate::isPossible()) GTEST_SKIP() << "this kernel hands no calls out";
  QuitTally* const tallies = QuitTally::shared(kMomentCount);
  inWorlds(worlds, [&](int number) {
    World world(kernel, opening, tallies, number);
    // Where there is little time they share the moments.
    const auto part =
        (kMomentCount + static_cast<std::size_t>(worlds) - 1) / static_cast<std::size_t>(worlds);
    world.run(share(), static_cast<std::size_t>(number) * part, part, wholeSweeps);
  });
  for (std::size_t i = 0; i < kMomentCount; ++i) tallies[i].report(kMoments[i].name);
}

namespace {

/// Passes a pid on after a while, beside what the program does meanwhile.
class LatePassing {
 public:
  LatePassing(PidRelay& relay, std::chrono::duration<double> delay)
      : thread_([&relay, delay] {
          std::this_thread::sleep_for(delay);
          relay.endMeant();
          relay.startSuccessor();
        }) {}
  ~LatePassing() { thread_.join(); }
  LatePassing(const LatePassing&) = delete;
  LatePassing& operator=(const LatePassing&) = delete;

 private:
  std::thread thread_;
};

/// A tenth of a millisecond to a tenth of a second, each order of magnitude as often.
std::chrono::duration<double> anyDelay(std::mt19937& random) {
  return std::chrono::duration<double>(
      std::pow(10, std::uniform_real_distribution<double>(-4, -1)(random)));
}

void clickAtAnyTime(QuitMenu& menu, PidRelay& relay, std::mt19937& random, QuitTally& tally) {
  const PidRelay::Names& names = relay.names();
  const auto phase =
      std::array{Phase::none, Phase::opening, Phase::choosing, Phase::answering}[random() % 4];
  const QuitWay way =
      phase == Phase::answering || random() % 4 == 0 ? QuitWay::forceQuit : QuitWay::quit;
  const auto during = [&](Phase now, auto work) {
    menu.rest();
    std::optional<LatePassing> passing;
    if (phase == now) passing.emplace(relay, anyDelay(random));
    return work();
  };
  relay.begin(false);
  const bool isThere =
      menu.list(names) && during(Phase::opening, [&] { return menu.open(names, way); });
  if (isThere && during(Phase::choosing, [&] { return menu.choose(way); })) {
    during(Phase::answering, [&] {
      menu.answerYes();
      return true;
    });
  }
  tally.add({.signal = signalOf(way),
             .wasMade = isThere,
             .mustReach = true,
             .where = "beside a scan or a click"},
            relay);
}

}  // namespace

void QuitStorm::quitAtAnyTime(const Opening& opening, int worlds) {
  QuitTally& tally = *QuitTally::shared(1);
  inWorlds(worlds, [&](int number) {
    const auto menu = opening(nullptr);
    if (!menu) return;
    PidRelay relay(false);
    relay.begin(false);
    // They come behind it in a scan, which goes on when it has been read.
    constexpr int kOthers = 480;  // in all worlds together
    std::vector<std::unique_ptr<IdleProcess>> others;
    for (int i = 1; i <= kOthers / worlds; ++i) {
      others.push_back(std::make_unique<IdleProcess>(relay.names().pid + i,
                                                     std::vector<std::string>{"worker"},
                                                     IdleProcess::OnTerm::remembers));
    }
    std::mt19937 random(static_cast<unsigned>(number));
    const auto begin = Clock::now();
    do {
      clickAtAnyTime(*menu, relay, random, tally);
    } while (std::chrono::duration<double>(Clock::now() - begin).count() < share());
    for (const auto& other : others) EXPECT_FALSE(other->wasSignalled()) << other->pid();
  });
  tally.report("at any time");
  EXPECT_GT(tally.clicks, 0);
}
