#include "frontends/qt/display.h"

#include <unistd.h>

#include <QApplication>
#include <QLocale>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "text/display_line.h"

namespace {

bool connected = false;

std::string variable(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? "" : value;
}

std::string displayName() {
  const std::string wayland = variable("WAYLAND_DISPLAY");
  const std::string x11 = variable("DISPLAY");
  return wayland.empty() || x11.empty() ? wayland + x11 : wayland + " or " + x11;
}

/// Replaces Qt's messages of several lines, followed by an abort, by one line that helps the user.
void onQtMessage(QtMsgType type, const QMessageLogContext&, const QString& message) {
  if (!connected) {
    if (type != QtFatalMsg) return;
    std::fprintf(stderr, "vorda: can't reach the display %s\n",
                 text::displayName(displayName()).c_str());
    _exit(EXIT_FAILURE);
  }
  if (message.contains("connection broke") || message.contains("connection experienced")) {
    std::fputs("vorda: the display has gone\n", stderr);
    _exit(EXIT_FAILURE);
  }
  if (type == QtCriticalMsg || type == QtFatalMsg) {
    std::fprintf(stderr, "vorda: %s\n", text::displayLine(message.toStdString()).c_str());
  }
}

/// Unsets variables with control characters: libraries below Qt print values that they don't
/// understand unchanged, and these would reach the terminal.
void forgetUnusableVariables() {
  for (const char* name : {"FC_LANG", "LANG", "LC_ALL", "LC_CTYPE", "SESSION_MANAGER"}) {
    const std::string value = variable(name);
    if (text::displayLine(value) != value) unsetenv(name);
  }
}

/// The platforms that Qt tries, in order.
std::string platforms() {
  const bool wayland = !variable("WAYLAND_DISPLAY").empty();
  const bool x11 = !variable("DISPLAY").empty();
  if (wayland) return x11 ? "wayland;xcb" : "wayland";
  return "xcb";
}

/// On Wayland Qt takes every window to be at the top left of the screen. With this variable it
/// believes the program, which knows better of one window (MenuWindow). Qt reads it only at its
/// start; programs that are started later must not inherit it.
class WindowsHavePlaces {
 public:
  WindowsHavePlaces() { qputenv(kVariable, "1"); }
  ~WindowsHavePlaces() { qunsetenv(kVariable); }
  WindowsHavePlaces(const WindowsHavePlaces&) = delete;
  WindowsHavePlaces& operator=(const WindowsHavePlaces&) = delete;

 private:
  static constexpr const char* kVariable = "QT_WAYLAND_DISABLE_FIXED_POSITIONS";
};

}  // namespace

std::unique_ptr<QApplication> openDisplay() {
  // Static, because Qt keeps pointers to them as long as the application lives.
  // What desktops show as the program's name, and find its desktop entry by.
  static std::string name = "vorda";
  static std::string option = "-platform";
  static std::string choice = platforms();
  static char* arguments[] = {name.data(), option.data(), choice.data(), nullptr};
  static int count = variable("QT_QPA_PLATFORM").empty() ? 3 : 1;

  forgetUnusableVariables();
  qInstallMessageHandler(onQtMessage);
  QApplication::setDesktopFileName("vorda");
  QApplication::setApplicationName("Vorda");
  const WindowsHavePlaces windowsHavePlaces;
  auto application = std::make_unique<QApplication>(count, arguments);
  // Qt itself would ask a translation, and there is none.
  QApplication::setLayoutDirection(QLocale::system().textDirection());
  connected = true;
  return application;
}
