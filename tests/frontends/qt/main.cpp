#include <gtest/gtest.h>

#include <QApplication>
#include <cstdio>

namespace {

/// The screen in memory says of many things that it can't do them.
void onQtMessage(QtMsgType, const QMessageLogContext&, const QString& message) {
  if (!message.startsWith("This plugin does not support")) {
    std::fprintf(stderr, "%s\n", qUtf8Printable(message));
  }
}

}  // namespace

/// The tests run on a screen that only exists in memory, and know no session bus.
int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:");
  qunsetenv("QT_QPA_PLATFORMTHEME");
  qunsetenv("XDG_CURRENT_DESKTOP");
  qInstallMessageHandler(onQtMessage);
  testing::InitGoogleTest(&argc, argv);
  const QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  return RUN_ALL_TESTS();
}
