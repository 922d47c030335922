#pragma once

#include <QDialog>
#include <string>

#include "ui/alerts.h"

/// A modal alert with its buttons in the alert's order, the first as the default. All texts are
/// shown as plain text; a long one scrolls.
class AlertDialog : public QDialog {
 public:
  explicit AlertDialog(const Alert& alert);

  /// The alert's informative text has become another.
  void setText(const std::string& informative);

  /// What FrontEnd::runModal returns, once the dialog has closed.
  int answer() const { return answer_; }

  /// Called for Escape and when the window is closed.
  void reject() override;

 private:
  void addButtons(const Alert& alert);
  void choose(int index);

  class TextBox;
  TextBox* text_ = nullptr;  ///< of the informative text; none for an alert without
  int escapeAnswer_;
  int answer_ = kAlertDismissed;
};
