#pragma once

#include <QDialog>

#include "ui/alert.h"

/// A modal alert: its buttons in the alert's order, the first the default. Whatever the
/// texts hold, they are shown as plain text, and a long one scrolls.
class AlertDialog : public QDialog {
 public:
  explicit AlertDialog(const Alert& alert);

  /// What FrontEnd::runModal has to answer, once the dialog has closed.
  int answer() const { return answer_; }

  /// Escape, and closing the window: the button "Cancel" where there is one.
  void reject() override;

 private:
  void addButtons(const Alert& alert);
  void choose(int index);

  int cancelAnswer_ = kAlertDismissed;
  int answer_ = kAlertDismissed;
};
