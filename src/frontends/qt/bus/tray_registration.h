#pragma once

#include <QElapsedTimer>
#include <QTimer>
#include <functional>

/// What a TrayHostWatch waits for, in milliseconds.
struct TrayHostTimes {
  int betweenLooks = 100;
  int patience = 3000;       ///< how long the icon may be missing from the list
  int firstPause = 250;      ///< before an icon that was dropped is registered again
  int longestPause = 30000;  ///< the pause doubles up to this
};

/// Whether the icon is registered with the present StatusNotifierWatcher, and when it is registered
/// again: whenever the watcher has refused or dropped it, each time after a longer pause.
class TrayRegistration {
 public:
  /// `look` is called when it is time to register the icon again or to look whether it is listed.
  TrayRegistration(const TrayHostTimes& times, const std::function<void()>& look);

  /// Another watcher may have come: it knows nothing of the icon.
  void forget();

  /// What the watcher made of the registration.
  ///@{
  void accepted();
  void refused();
  ///@}
  /// What the watcher's list says.
  ///@{
  void listed();
  void missing();
  ///@}

  bool isRegistered() const { return registered_; }
  /// Whether the list has lacked the icon for longer than TrayHostTimes::patience.
  bool isOverdue() const { return missing_ == Missing::forTooLong; }

 private:
  enum class Missing { no, forAMoment, forTooLong };

  void missFromNowOn();
  void registerAgainLater();

  TrayHostTimes times_;
  bool registered_ = false;
  bool listed_ = false;  // when the watcher was asked last
  Missing missing_ = Missing::no;
  int pause_;
  QElapsedTimer sinceListed_;
  QTimer patience_;
  QTimer again_;
};
