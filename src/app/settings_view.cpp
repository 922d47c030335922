#include "app/settings_view.h"

#include "app/branding.h"
#include "platform/words.h"
#include "ui/status_bar_controller.h"

namespace SettingsView {

std::vector<Line> lines() {
  const std::string where = std::string(platform::words().statusArea);
  return {
      {Branding::kProductName, Font::title2Bold},
      {Branding::kSlogan, Font::body, Foreground::secondary},
      {Branding::kDevelopedBy, Font::caption, Foreground::secondary, 4},
      {Branding::makerLine(), Font::caption2, Foreground::tertiary},
      {"Click " + std::string(StatusBarController::kStatusTitle) + " in the " + where +
           " to manage processes.",
       Font::body, Foreground::primary, 8},
      {Branding::copyrightLine(), Font::caption2, Foreground::tertiary, 8},
  };
}

}  // namespace SettingsView
