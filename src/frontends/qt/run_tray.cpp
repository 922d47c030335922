#include "frontends/qt/run_tray.h"

#include <QApplication>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <utility>
#include <vector>

#include "frontends/qt/display.h"
#include "frontends/qt/own_sigterm.h"
#include "frontends/qt/qt_front_end.h"
#include "frontends/qt/start_at_login.h"
#include "ui/status_bar_controller.h"

namespace {

constexpr std::chrono::milliseconds kBusPatience{1000};

NamedBus openBus() {
  NamedBus named{SessionBus::open(kBusPatience), nullptr};
  if (named.bus) named.name = std::make_unique<InstanceName>(*named.bus);
  return named;
}

int show(NamedBus bus, const TrayTexts& texts, bool opensSettings) {
  const auto application = openDisplay();
  surviveOwnSigterm();
  std::vector<SettingsView::Line> settings = texts.settings;
  const char* desktops = std::getenv("XDG_CURRENT_DESKTOP");
  settings.push_back({startAtLoginHint(desktops == nullptr ? "" : desktops),
                      SettingsView::Font::caption2, SettingsView::Foreground::secondary});
  QtFrontEnd frontEnd(std::move(bus), std::move(settings));
  StatusBarController controller(frontEnd, texts.about);
  frontEnd.reportTo(&controller);
  if (opensSettings) frontEnd.showSettings();
  const int status = QApplication::exec();
  frontEnd.reportTo(nullptr);
  return status;
}

}  // namespace

int runTray(const TrayTexts& texts, bool opensSettings, std::chrono::milliseconds patience) {
  NamedBus bus = openBus();
  if (bus.name) {
    switch (bus.name->claim(patience)) {
      case InstanceName::Outcome::owned:
        break;
      case InstanceName::Outcome::activated:
        return EXIT_SUCCESS;
      case InstanceName::Outcome::silent:
        std::fputs("vorda: another instance is running and does not answer\n", stderr);
        return EXIT_FAILURE;
    }
  }
  return show(std::move(bus), texts, opensSettings);
}
