#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/memory.h"
#include "scanner/vorda_process.h"
#include "ui/menu.h"
#include "ui/waiting_times.h"

/// What is wrong with the memory.
enum class MemoryTrouble {
  runsOut,  ///< little is available, and that is going fast
  stalls,   ///< processes wait for it
};

/// The process that memory is short because of, as far as can be told.
struct MemoryCulprit {
  ProcessReference process;
  std::string name;    ///< VordaProcess::displayName
  double memMB = 0;    ///< what it holds
  double grownMB = 0;  ///< so much more than `seconds` before; 0: it is only the largest
  double seconds = 0;
};

/// Decides when the user is warned of memory that runs out, and of whom. It knows no clock and asks
/// nobody: looks and samples go in. All times are in seconds, on one clock that only goes forward.
class MemoryWarningRule {
 public:
  static constexpr double kLeastAvailable = 0.15;  ///< of all memory; with less, its end counts
  static constexpr double kSoon = 60;              ///< gone within that time: its end is near
  static constexpr int kFalls = 3;                 ///< so many looks in a row have to say so
  static constexpr double kManyStalls = 20;        ///< in percent, of MemoryStalls::some
  static constexpr double kManyFullStalls = 5;     ///< in percent, of MemoryStalls::full
  static constexpr double kStalledFor = 15;        ///< for so long
  static constexpr double kSameAgain = 600;        ///< not twice within that time of one culprit
  static constexpr double kHour = 3600;
  static constexpr std::size_t kMostAnHour = 3;
  static constexpr double kUsualPause = WaitingTimes::kRefreshInterval;
  static constexpr double kLeastPause = 0.25;
  static constexpr double kOverAfter = 60;  ///< without trouble for so long: it is over

  /// The memory at one moment.
  struct Look {
    double time = 0;
    double availableGB = 0;
    double totalGB = 0;
    std::optional<platform::MemoryStalls> stalls = {};
  };

  /// To be given at every refresh, and as soon as nextLook() says. One that comes sooner does not
  /// change the trend.
  void look(const Look& look);

  /// What is wrong as of the last look.
  std::optional<MemoryTrouble> trouble() const { return trouble_; }

  /// How long after the last look the next one is wanted, in seconds: less where memory will be
  /// gone sooner. Three looks in a row cover a quarter of the time that is left, so that even
  /// memory that lasts for seconds only is noticed before it is gone.
  double nextLook() const { return trouble_ ? kUsualPause : pause_; }

  /// Whether there has been no trouble for kOverAfter.
  bool isOver(double time) const;

  /// What the user is to be told now.
  struct Warning {
    MemoryTrouble trouble = MemoryTrouble::runsOut;
    std::optional<MemoryCulprit> culprit = {};  ///< none where no process is listed
  };

  /// Takes a sample of processes, right after a look. A warning counts as given; there is none
  /// while the menu is open, none of the same culprit for kSameAgain, and no more than kMostAnHour.
  std::optional<Warning> sampled(double time, const std::vector<VordaProcess>& processes,
                                 bool menuIsOpen);

 private:
  /// What a process held.
  struct Held {
    std::int32_t pid = 0;
    std::optional<std::uint64_t> identity;
    double memMB = 0;
  };
  struct Sample {
    double time = 0;
    double availableGB = 0;
    std::vector<Held> processes;  ///< by pid
  };
  struct Given {
    double time = 0;
    std::optional<ProcessReference> culprit;
  };

  void followTrend(const Look& look);
  void followStalls(const Look& look);
  std::optional<MemoryCulprit> culprit(double time,
                                       const std::vector<VordaProcess>& processes) const;
  static double heldBefore(const Sample& sample, const VordaProcess& process);
  void remember(double time, const std::vector<VordaProcess>& processes);
  bool mayWarn(double time, const std::optional<MemoryCulprit>& culprit);

  std::optional<Look> last_;  ///< the last that counted for the trend
  double availableGB_ = 0;    ///< at the last of all
  int falls_ = 0;
  double pause_ = kUsualPause;
  std::optional<double> stalledSince_;
  std::optional<double> stallsAskedAt_;
  std::optional<MemoryTrouble> trouble_;
  std::optional<double> lastTrouble_;
  std::vector<Sample> samples_;  ///< of the last minute
  std::vector<Given> given_;     ///< in the last hour
};
