#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>
#include <chrono>
#include <functional>
#include <memory>
#include <utility>

#include "platform/linux/sd_bus_ptr.h"

/// One connection to the session bus. Nothing here waits for the bus longer than it says:
/// calls are sent and their answers come by the event loop, so that a bus that stalls or
/// dies costs the program its tray host and nothing else.
class SessionBus : public QObject {
  Q_OBJECT

 public:
  /// Connects, and waits until the bus has greeted back; nullptr when there is no bus or it
  /// has not answered in that time: the environment hides it then, until a later call finds
  /// it, from whoever else would wait for it. Needs no event loop.
  [[nodiscard]] static std::unique_ptr<SessionBus> open(std::chrono::milliseconds patience);

  ~SessionBus() override;

  sd_bus* get() const { return bus_.get(); }

  /// Works off what comes in until `done` is true: false when the time was over first, or
  /// the connection was lost. For the time before there is an event loop.
  [[nodiscard]] bool waitUntil(const std::function<bool()>& done,
                               std::chrono::milliseconds patience);

  /// From now on the event loop works off what comes in.
  void serve();

 Q_SIGNALS:
  /// The connection is lost for good; open another one.
  void lost();

 private:
  static std::unique_ptr<SessionBus> greeted(std::chrono::milliseconds patience);
  explicit SessionBus(BusPtr bus) : bus_(std::move(bus)) {}

  void process();
  void watchForMore();

  BusPtr bus_;
  bool processing_ = false;
  bool lost_ = false;
  std::unique_ptr<QSocketNotifier> readable_;
  std::unique_ptr<QSocketNotifier> writable_;
  QTimer timeout_;
};
