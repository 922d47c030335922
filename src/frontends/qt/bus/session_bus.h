#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>
#include <chrono>
#include <functional>
#include <memory>
#include <utility>

#include "platform/linux/sd_bus_ptr.h"

/// One connection to the session bus. Only the functions that take a `patience` wait for the bus.
/// All else is sent and answered through the event loop, so a bus that stalls or dies costs the
/// program its tray host and nothing else.
class SessionBus : public QObject {
  Q_OBJECT

 public:
  /// Connects, and waits until the bus has accepted the connection. nullptr when there is no bus
  /// or it does not answer in that time: its address is then removed from the environment, until a
  /// later call finds it again, so that nobody else in the program waits for it. Needs no event
  /// loop.
  [[nodiscard]] static std::unique_ptr<SessionBus> open(std::chrono::milliseconds patience);

  ~SessionBus() override;

  sd_bus* get() const { return bus_.get(); }

  /// Handles incoming messages until `done` is true. False when the time is over first or the
  /// connection is lost. For the time before there is an event loop.
  [[nodiscard]] bool waitUntil(const std::function<bool()>& done,
                               std::chrono::milliseconds patience);

  /// From now on the event loop handles incoming messages.
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
