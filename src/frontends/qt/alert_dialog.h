#pragma once

#include <QDialog>

#include "ui/alert.h"

/// A modal alert with its buttons in the alert's order, the first as the default. All texts are
/// shown as plain text; a long one scrolls.
class AlertDialog : public QDialog {
 public:
  explicit AlertDialog(const Alert& alert);

  /// What FrontEnd::runModal returns, once the dialog has closed.
  int answer() const { return answer_; }

  /// Called for Escape and when the window is closed: chooses "Cancel" if there is such a button.
  void reject() override;

 private:
  void addButtons(const Alert& alert);
  void choose(int index);

  int cancelAnswer_ = kAlertDismissed;
  int answer_ = kAlertDismissed;
};
