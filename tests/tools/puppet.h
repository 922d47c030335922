#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

/// A process that does what it is told. It begins as a copy of the test program, ends with this
/// object, and dies with the test program whatever happens to that.
class Puppet {
 public:
  /// `pid`: the pid that it shall have; 0 for any.
  explicit Puppet(pid_t pid = 0);
  ~Puppet();
  Puppet(const Puppet&) = delete;
  Puppet& operator=(const Puppet&) = delete;

  /// -1 when it could not be started: most users may not choose a pid.
  pid_t pid() const { return pid_; }

  /// Writes a title over its arguments, as setproctitle does; another one each time.
  void rewriteTitle();

  /// Keeps 8 MiB more of memory busy.
  void grow();

  /// Becomes kStranger's, for root.
  void changeOwner();

  /// Becomes a program with these arguments, which takes no more orders.
  void execute(const std::vector<std::string>& arguments);

  /// Whether it still takes orders.
  bool obeys() const { return pid_ > 0 && obeys_; }

  /// Ends it, and leaves it a zombie.
  void die() const;

  /// Ends and reaps it.
  void end();

 private:
  enum class Order : char { rewriteTitle, grow, changeOwner, execute };

  void tell(Order order, const std::string& what = {});
  [[noreturn]] void obey();

  int orders_[2] = {-1, -1};
  int answers_[2] = {-1, -1};
  bool obeys_ = true;
  pid_t pid_ = -1;
};
