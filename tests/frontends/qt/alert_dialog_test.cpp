#include "frontends/qt/alert_dialog.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>

namespace {

Alert forceQuit() {
  return {.messageText = "Force Quit?",
          .informativeText = "firefox\nPID 12\n\nThis cannot be undone.",
          .style = Alert::Style::warning,
          .buttons = {"Force Quit", "Cancel"}};
}

QList<QPushButton*> buttons(const AlertDialog& dialog) {
  return dialog.findChildren<QPushButton*>();
}

QStringList texts(const AlertDialog& dialog) {
  QStringList shown;
  for (const auto* text : dialog.findChildren<QPlainTextEdit*>()) shown << text->toPlainText();
  return shown;
}

void press(AlertDialog& dialog, int key) {
  QKeyEvent down(QEvent::KeyPress, key, Qt::NoModifier);
  QCoreApplication::sendEvent(&dialog, &down);
}

TEST(AlertDialog, ShowsItsTexts) {
  const AlertDialog dialog(forceQuit());
  EXPECT_EQ(texts(dialog),
            QStringList({"Force Quit?", "firefox\nPID 12\n\nThis cannot be undone."}));
}

TEST(AlertDialog, KeepsTheOrderOfItsButtons) {
  AlertDialog dialog(forceQuit());
  dialog.show();
  const auto shown = buttons(dialog);
  ASSERT_EQ(shown.size(), 2);
  EXPECT_EQ(shown[0]->text(), "Force Quit");
  EXPECT_EQ(shown[1]->text(), "Cancel");
  EXPECT_LT(shown[0]->x(), shown[1]->x());
  EXPECT_TRUE(shown[0]->isDefault());
  EXPECT_FALSE(shown[1]->isDefault());
}

TEST(AlertDialog, AnswersWithTheButtonsPlace) {
  AlertDialog first(forceQuit());
  buttons(first)[0]->click();
  EXPECT_EQ(first.answer(), kAlertFirstButtonReturn);
  AlertDialog second(forceQuit());
  buttons(second)[1]->click();
  EXPECT_EQ(second.answer(), kAlertFirstButtonReturn + 1);
}

TEST(AlertDialog, ReturnChoosesTheFirstButton) {
  AlertDialog dialog(forceQuit());
  dialog.show();
  press(dialog, Qt::Key_Return);
  EXPECT_EQ(dialog.answer(), kAlertFirstButtonReturn);
  EXPECT_FALSE(dialog.isVisible());
}

TEST(AlertDialog, EscapeMeansCancel) {
  AlertDialog dialog(forceQuit());
  dialog.show();
  press(dialog, Qt::Key_Escape);
  EXPECT_EQ(dialog.answer(), kAlertFirstButtonReturn + 1);
  EXPECT_FALSE(dialog.isVisible());
}

TEST(AlertDialog, ClosingItMeansCancel) {
  AlertDialog dialog(forceQuit());
  dialog.show();
  dialog.close();
  EXPECT_EQ(dialog.answer(), kAlertFirstButtonReturn + 1);
}

TEST(AlertDialog, EscapeWithoutACancelButtonChoosesNothing) {
  AlertDialog dialog({.messageText = "Failed"});
  dialog.show();
  press(dialog, Qt::Key_Escape);
  EXPECT_EQ(dialog.answer(), kAlertDismissed);
}

TEST(AlertDialog, WithoutButtonsHasOneThatDismissesIt) {
  const AlertDialog dialog({.messageText = "Failed"});
  ASSERT_EQ(buttons(dialog).size(), 1);
  buttons(dialog)[0]->click();
  EXPECT_EQ(dialog.answer(), kAlertFirstButtonReturn);
}

TEST(AlertDialog, ShowsMarkupAsText) {
  const char* hostile = "<b>x</b> <img src=/etc/passwd> &amp; a_b & c";
  const AlertDialog dialog({.messageText = hostile, .informativeText = hostile});
  EXPECT_EQ(texts(dialog), QStringList({hostile, hostile}));
}

TEST(AlertDialog, FitsTheScreenWhateverItSays) {
  const std::string endless(100000, 'x');
  std::string lines;
  for (int i = 0; i < 10000; ++i) lines += "line\n";
  AlertDialog dialog({.messageText = endless, .informativeText = lines});
  dialog.show();
  EXPECT_LT(dialog.height(), dialog.screen()->availableGeometry().height());
  EXPECT_LT(dialog.width(), 600);
  EXPECT_EQ(texts(dialog)[0].size(), 100000);
}

TEST(AlertDialog, IsAsHighAsAWrappedTextNeeds) {
  const std::string words =
      "Menu bar process manager with a live color-coded memory pressure strip, and more words "
      "than one line of this dialog can hold";
  AlertDialog dialog({.messageText = "x", .informativeText = words});
  dialog.show();
  const auto* text = dialog.findChildren<QPlainTextEdit*>()[1];
  EXPECT_GE(text->height(), 2 * text->fontMetrics().height());
  EXPECT_EQ(text->verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
}

TEST(AlertDialog, ShowsAPictureForEveryStyle) {
  for (const Alert::Icon icon : {Alert::Icon::standard, Alert::Icon::badge}) {
    for (const Alert::Style style : {Alert::Style::informational, Alert::Style::warning}) {
      const AlertDialog dialog({.messageText = "x", .style = style, .icon = icon});
      EXPECT_EQ(dialog.findChild<QLabel*>()->pixmap().deviceIndependentSize(), QSizeF(48, 48));
    }
  }
}

TEST(AlertDialog, FindsRoomForWhatIsKnownLater) {
  AlertDialog dialog(forceQuit());
  dialog.show();
  const int before = dialog.sizeHint().height();
  dialog.setText("firefox\nPID 12\n\nThis cannot be undone.\nIts fair share: 512 MB\nmore");
  QCoreApplication::sendPostedEvents();  // among them that the layout is to be done anew
  EXPECT_TRUE(texts(dialog).last().contains("512 MB"));
  EXPECT_GT(dialog.sizeHint().height(), before);
  EXPECT_TRUE(buttons(dialog)[0]->isDefault());
}

}  // namespace
