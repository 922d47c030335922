#include "frontends/qt/settings_window.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QPointer>

#include "frontends/qt/event_loop.h"

namespace {

using Font = SettingsView::Font;
using Foreground = SettingsView::Foreground;

QList<QLabel*> labels(const SettingsWindow& window) {
  return window.findChildren<QLabel*>();
}

TEST(SettingsWindow, Is400By260) {
  SettingsWindow window({{"Vorda"}});
  window.show();
  EXPECT_EQ(window.size(), QSize(400, 260));
  EXPECT_EQ(window.minimumSize(), window.maximumSize());
}

TEST(SettingsWindow, IsTitledAsSuch) {
  const SettingsWindow window({{"Vorda"}});
  EXPECT_EQ(window.windowTitle(), "Vorda Settings");
}

TEST(SettingsWindow, ShowsTheLinesFromTopToBottom) {
  SettingsWindow window({{"one"}, {"two"}, {"three"}});
  window.show();
  const auto shown = labels(window);
  ASSERT_EQ(shown.size(), 3);
  EXPECT_EQ(shown[0]->text(), "one");
  EXPECT_EQ(shown[2]->text(), "three");
  EXPECT_LT(shown[0]->y(), shown[1]->y());
  EXPECT_LT(shown[1]->y(), shown[2]->y());
  EXPECT_GE(shown[0]->x(), SettingsView::kPadding);
}

TEST(SettingsWindow, StylesTheLines) {
  const SettingsWindow window({{"title", Font::title2Bold},
                               {"body", Font::body, Foreground::secondary},
                               {"caption", Font::caption, Foreground::tertiary},
                               {"caption 2", Font::caption2}});
  const auto shown = labels(window);
  EXPECT_TRUE(shown[0]->font().bold());
  EXPECT_FALSE(shown[1]->font().bold());
  for (int i = 0; i < 3; ++i) {
    EXPECT_GT(shown[i]->font().pointSizeF(), shown[i + 1]->font().pointSizeF());
  }
  const auto strength = [&shown](int line) {
    return shown[line]->palette().color(QPalette::WindowText).alpha();
  };
  EXPECT_EQ(strength(0), 255);
  EXPECT_LT(strength(1), strength(0));
  EXPECT_LT(strength(2), strength(1));
}

TEST(SettingsWindow, KeepsTheRoomAboveALine) {
  SettingsWindow close({{"one"}, {"two"}});
  SettingsWindow apart({{"one"}, {"two", Font::body, Foreground::primary, 8}});
  EXPECT_EQ(labels(close)[1]->contentsMargins().top(), 0);
  EXPECT_EQ(labels(apart)[1]->contentsMargins().top(), 8);
}

TEST(SettingsWindow, ShowsMarkupAsText) {
  const SettingsWindow window({{"<b>x</b>"}});
  EXPECT_EQ(labels(window)[0]->textFormat(), Qt::PlainText);
}

TEST(SettingsWindow, IsGoneOnceItIsClosed) {
  QPointer<SettingsWindow> window = new SettingsWindow({{"Vorda"}});
  window->show();
  window->close();
  settle();
  EXPECT_TRUE(window.isNull());
}

}  // namespace
