#pragma once

#include <array>
#include <functional>
#include <memory>

#include "soak/interleaving.h"
#include "soak/pid_relay.h"
#include "soak/quit_menu.h"
#include "soak/storm.h"

/// What a kernel lets a program know of who a process is.
struct IdentityKernel {
  const char* name = "";
  Interleaving::Refusal refusal = nullptr;
  bool tells = true;     ///< enough to tell a process from the next one of its pid
  bool refuses = true;   ///< at least one thing that the program asks for
  bool pinsPids = true;  ///< a process can be signalled without naming it by its pid
};
extern const std::array<IdentityKernel, 4> kIdentityKernels;

/// A process is chosen to be quit. Before, during or after the scan that its row comes of, or
/// while the click is worked off, it ends and its pid is given anew, at once or a little later,
/// or nothing of that happens. Whoever has the pid then is never signalled; the one that is meant
/// is.
class QuitStorm : public Storm {
 protected:
  void SetUp() override;

  /// Starts the program and shows its menu. `gate`: where its calls have to wait; null: nowhere.
  using Opening = std::function<std::unique_ptr<QuitMenu>(CallGate* gate)>;

  /// In so many pid namespaces at once, for this storm's share of the time at least.
  /// `wholeSweeps`: until it has happened before each call in turn, too.
  static void quitAtEachPlace(const IdentityKernel& kernel, const Opening& opening, int worlds,
                              bool wholeSweeps);

  /// The same at moments of chance, among many other processes, with nothing between the program
  /// and the kernel.
  static void quitAtAnyTime(const Opening& opening, int worlds);
};
