#pragma once

#include <sys/types.h>

#include <string>
#include <string_view>
#include <vector>

#include "tools/scoped_variable.h"
#include "tools/temp_folder.h"

/// A real systemd user manager of the test's own (user_manager_rig.sh), and an environment in
/// which this program is its client. At the end of its scope all of it is gone.
class UserManagerRig {
 public:
  UserManagerRig();
  ~UserManagerRig();
  UserManagerRig(const UserManagerRig&) = delete;
  UserManagerRig& operator=(const UserManagerRig&) = delete;

  /// Why there is no manager; "" when there is one.
  const std::string& reason() const { return reason_; }

  /// Ends the manager and its bus, and starts others in the same place.
  void restart();
  /// Ends the manager and its bus for good.
  void end();

  /// Writes the unit file NAME.service: "[Service]" and `lines`. Returns its path.
  std::string addService(std::string_view name, std::string_view lines) const;

  /// Lets the manager hang, or go on.
  void pause() const;
  void resume() const;
  /// The same with its bus.
  void pauseBus() const;
  void resumeBus() const;

 private:
  void start();
  pid_t manager() const;

  TempFolder folder_;
  ScopedVariable home_;
  ScopedVariable config_;
  ScopedVariable runtime_;
  ScopedVariable bus_;
  std::string reason_;
  pid_t script_ = -1;
  int standardInput_ = -1;
};

/// The line of a unit file that runs `command`, whose words have no blanks.
std::string execStart(const std::vector<std::string>& command);
