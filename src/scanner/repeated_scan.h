#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "launch_agents/vorda_launch_agent.h"
#include "platform/processes.h"
#include "scanner/families.h"
#include "scanner/naming/ollama_models.h"
#include "scanner/owner_names.h"
#include "scanner/process_cache.h"
#include "scanner/process_tree.h"
#include "scanner/recognizer.h"
#include "scanner/roles/searched_line.h"
#include "scanner/vorda_process.h"
#include "scanner/waiting_launchers.h"

namespace ProcessScanner {

/// Scans again and again. What it tells is what ProcessScanner::scan tells at that moment; but it
/// keeps what it has found out about each process, and looks only at what is new. Where nothing
/// is, it allocates nothing.
class RepeatedScan {
 public:
  /// Puts what ProcessScanner::scan(minMemMB, launchAgents, alsoPids) returns into `processes`:
  /// empty at first, then the list of the last scan, from which processes may have been taken.
  void scan(double minMemMB, std::span<const VordaLaunchAgent> launchAgents,
            std::vector<VordaProcess>& processes, std::span<const std::int32_t> alsoPids = {});

  /// The user's own processes that the last scan has not listed, but that belong to the family of
  /// one that it has; at most kMostUnlistedMembers of them.
  const std::vector<VordaProcess>& unlistedMembers() const { return unlisted_; }
  static constexpr std::size_t kMostUnlistedMembers = 512;

 private:
  /// An unknown owner counts as the superuser.
  std::uint32_t uid() const { return facts_.effectiveUid.value_or(0); }
  bool learn(CachedProcess& process);
  recognition::Verdict verdictAs(std::string_view name, const SearchedLine& line);
  std::string_view exeOf(std::string_view name);
  bool isOrdinaryAnyway(std::string_view title);
  bool isListed(CachedProcess& process, double minMemMB);
  void fillFamilies(std::vector<VordaProcess>& processes,
                    std::span<const VordaLaunchAgent> launchAgents);
  void findUnlistedMembers(std::span<const VordaLaunchAgent> launchAgents);
  bool fillMember(CachedProcess& process, std::span<const VordaLaunchAgent> launchAgents);
  bool lookAtMember(CachedProcess& process);
  void makeRow(CachedProcess& process);
  void nameModel(CachedProcess& process);
  void fillRow(CachedProcess& process, std::span<const VordaLaunchAgent> launchAgents);
  void leaveRolesToChildren(std::vector<VordaProcess>& processes, double minMemMB);

  std::uint32_t ownUid_ = 0;
  OwnerNames ownerNames_;
  ProcessCache cache_;
  ProcessTree tree_;
  recognition::OllamaModels ollama_;
  std::vector<std::int32_t> waiting_;  ///< the pids of the rows that wait
  WaitingLaunchers launchers_;
  Families families_;
  std::vector<VordaProcess> unlisted_;

  // Of the process that is being looked at.
  platform::ProcessFacts facts_;
  bool isRead_ = false;  ///< its command line, into `line_`
  SearchedLine line_;
  recognition::Verdict verdict_;  ///< on that
  std::optional<double> memMB_;

  // Buffers.
  SearchedLine otherLine_;
  std::string exe_;
  std::vector<std::string_view> words_;
  std::string joinedWords_;
  std::vector<std::size_t> order_;
  std::vector<std::int32_t> listedHeads_;  ///< ascending: families of which one is listed
  std::vector<std::int32_t> listedPids_;   ///< ascending
  std::vector<std::int32_t> wanted_;       ///< members that are not listed
};

}  // namespace ProcessScanner
