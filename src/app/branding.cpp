#include "app/branding.h"

#include "app/product.h"
#include "platform/words.h"

namespace Branding {

std::string version() {
  return kVersion;
}

std::string makerLine() {
  return std::string(kMakerFullName) + " (" + kMakerShortName + ")";
}

std::string copyrightLine() {
  return kCopyright;
}

std::string aboutBody() {
  return std::string(kSlogan) +
         "\n\n"
         "Menu bar process manager with a live color-coded memory pressure strip.\n"
         "Same scale as " +
         std::string(platform::words().systemMonitor) +
         ". Names match the graph.\n\n"
         "Spots model servers, agents, and fine-tunes (LoRA, SFT, Unsloth, …)\n"
         "from live process signals — not a fixed app list.\n\n" +
         kDevelopedBy + "\n" + makerLine() + "\n" + copyrightLine();
}

Alert aboutAlert() {
  return {.messageText = kProductName,
          .informativeText = aboutBody(),
          .icon = Alert::Icon::badge,
          .activatesProgram = false};
}

}  // namespace Branding
