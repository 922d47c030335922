#pragma once

#include <sys/types.h>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "tools/background_program.h"
#include "tools/temp_folder.h"

struct sd_bus;
struct sd_bus_message;

/// A message bus of the test's own, and somebody on it who goes by the name of the user's service
/// manager and does what a test says. All functions but the constructor return when it is done.
class ScriptedManager {
 public:
  struct Unit {
    std::string activeState = "active";
    std::uint32_t pid = 0;
  };

  ScriptedManager();
  ~ScriptedManager();
  ScriptedManager(const ScriptedManager&) = delete;
  ScriptedManager& operator=(const ScriptedManager&) = delete;

  /// Why there is no bus; "" when there is one.
  const std::string& reason() const { return reason_; }
  /// Where its bus listens.
  std::vector<std::string> sockets() const { return {folder_ / "bus"}; }
  pid_t bus() const { return daemon_->pid(); }

  /// The unit NAME.service.
  void setUnit(const std::string& name, const Unit& unit);
  /// From now on, questions of this kind ("Get", "StartUnit", …) are answered when release()
  /// says so; "": all questions.
  void hold(const std::string& member = "");
  void release();
  /// The answer to the next orders.
  void refuseOrders(const std::string& error, const std::string& text);
  /// From now on it answers every question with a text.
  void talkNonsense();

  /// Says of a job that it has ended. That of the last order is meant unless another is named.
  void endJob(const std::string& result, const std::string& job = "");
  /// The same, this many times, of a job that nobody asked for.
  void endOtherJobs(int times);
  /// Somebody else on the bus says so, to whom gave the last order and nobody else.
  void endJobAsStranger(const std::string& result);
  /// Somebody else on the bus says to the same that the manager has gone.
  void goAsStranger();
  /// Leaves the bus.
  void disconnect();

  /// What it was asked so far: "ListUnitsByPatterns", "StartUnit ollama.service", …
  std::vector<std::string> calls();
  /// When it was first asked for a pid, in nanoseconds since boot; 0: never.
  std::uint64_t firstAskedForPid();

 private:
  void run(const std::function<void()>& work);
  void loop();
  void answer(sd_bus_message* call);
  void answerTruly(sd_bus_message* call, const std::string& member);
  void appendUnits(sd_bus_message* reply, const std::string& only) const;

  struct Shared;

  TempFolder folder_;
  std::unique_ptr<BackgroundProgram> daemon_;
  std::string reason_;
  std::unique_ptr<Shared> shared_;  ///< between the test and the manager
  sd_bus* manager_ = nullptr;
  sd_bus* stranger_ = nullptr;
  std::thread thread_;

  // The manager's own.
  std::map<std::string, Unit> units_;
  bool holds_ = false;
  std::string heldMember_;
  std::vector<sd_bus_message*> held_;
  std::string error_;
  std::string errorText_;
  bool talksNonsense_ = false;
  int jobs_ = 0;
  std::string client_;
  std::vector<std::string> calls_;
  std::uint64_t firstAskedForPid_ = 0;
};
