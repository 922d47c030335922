#pragma once

#include <QObject>
#include <chrono>

#include "frontends/qt/bus/session_bus.h"

/// One instance per session: the first one owns a name on the session bus, and serves
/// org.freedesktop.Application there, so that a second start can ask it to show itself.
class InstanceName : public QObject {
  Q_OBJECT

 public:
  static constexpr const char* kName = "com.halvek.Vorda";
  static constexpr const char* kPath = "/com/halvek/Vorda";

  enum class Outcome {
    owned,      ///< this is the first instance
    activated,  ///< another one runs, and has shown itself
    silent,     ///< another one runs, and does not answer
  };

  /// Serves activation from the start, so that it works as soon as the name is owned.
  explicit InstanceName(SessionBus& bus);

  /// How long each question may take.
  static constexpr std::chrono::milliseconds kPatience{3000};

  /// Takes the name, or activates the instance that has it. Waits for a few answers, each for
  /// `patience` at most. Needs no event loop.
  [[nodiscard]] Outcome claim(std::chrono::milliseconds patience = kPatience);

  /// Takes the name if it is free, for an instance that runs already.
  void claimLater();

 Q_SIGNALS:
  /// The program was started again.
  void activated();

 private:
  friend struct InstanceNameVtable;

  SessionBus& bus_;
  BusSlot object_;
  BusSlot request_;
};
