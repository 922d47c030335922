#pragma once

#include <sys/types.h>

#include "soak/pid_relay.h"

/// The real program, in front of somebody who wants to quit one process and goes by what stands
/// in the menu: by its name and its pid.
class QuitMenu {
 public:
  enum class Way { quit, forceQuit };

  QuitMenu() = default;
  virtual ~QuitMenu() = default;
  QuitMenu(const QuitMenu&) = delete;
  QuitMenu& operator=(const QuitMenu&) = delete;

  virtual pid_t program() const = 0;

  /// Has the list brought up to date. Whether the process that is meant has a row.
  virtual bool list(const PidRelay::Names& names) = 0;

  /// Waits until what is done next counts.
  virtual void rest() {}

  /// Opens what its row opens, for which the program brings the list up to date again. Whether
  /// that row's item can be chosen then; a host may still hold one of the last list.
  virtual bool open(const PidRelay::Names& names, Way way) = 0;

  /// Chooses it, and waits until the program has done what it then does: true when that is to
  /// ask whether it shall.
  virtual bool choose(Way way) = 0;

  /// Says yes, and waits until the program has done it.
  virtual void answerYes() = 0;
};
