#include "frontends/terminal/sample_menu.h"

#include <memory>

namespace SampleMenu {

MenuItem label(const std::string& title) {
  return {.title = title, .enabled = false};
}

MenuItem separator() {
  return {.kind = MenuItem::Kind::separator};
}

MenuItem command(const std::string& title, Action action) {
  return {.title = title, .action = action};
}

MenuItem process(std::int32_t pid, const std::string& title, std::uint64_t identity) {
  const ProcessReference reference{pid, identity};
  const std::string number = std::to_string(pid);
  MenuItem quit = command("Quit", Action::quitProcess);
  quit.representedObject = pid;
  quit.process = reference;
  return {.title = title,
          .toolTip = title + "\n100 MB · App · pid " + number + "\nOwner: ada",
          .dot = Color{1, 0, 0},
          .process = reference,
          .submenu = {label("100 MB · pid " + number), label("App"), separator(), quit,
                      command("Force Quit ( 100 MB)", Action::forceProcess),
                      command("Full details…", Action::showDetails)}};
}

MenuItem launchAgent(const std::string& name) {
  const VordaLaunchAgent record{.label = name, .plistPath = "/units/" + name + ".service"};
  MenuItem stop = command("Stop / unload", Action::unloadLaunchAgent);
  stop.representedObject = record;
  return {.title = name + "  ·  on", .submenu = {stop}};
}

Menu menu(const std::vector<Section>& sections) {
  Menu menu;
  menu.items.push_back({.kind = MenuItem::Kind::strip,
                        .enabled = false,
                        .strip = std::make_shared<MemoryPressureView>()});
  menu.items.push_back(label("System   4.0 / 16 GB used"));
  menu.items.push_back(label("Training / fine-tunes  none"));
  menu.items.push_back(label("Model servers  none"));
  for (const Section& section : sections) {
    menu.items.push_back(separator());
    menu.items.push_back(label("— " + section.heading + " —"));
    menu.items.insert(menu.items.end(), section.rows.begin(), section.rows.end());
  }
  menu.items.push_back(separator());
  menu.items.push_back(command("Refresh now", Action::refreshNow));
  menu.items.push_back(command("About Vorda", Action::about));
  menu.items.push_back(label("Developed by Halvek"));
  menu.items.push_back(separator());
  menu.items.push_back(command("Quit Vorda", Action::quitApp));
  return menu;
}

Section topRAM(const std::vector<std::int32_t>& pids) {
  Section section{.heading = "Top RAM"};
  for (const std::int32_t pid : pids) {
    section.rows.push_back(process(pid, "P" + std::to_string(pid)));
  }
  return section;
}

void setStrip(Menu& menu, const std::vector<std::int32_t>& pids, double fraction, double pressure) {
  MemoryPressureView& strip = *menu.items.front().strip;
  strip.segments.clear();
  for (const std::int32_t pid : pids) {
    strip.segments.push_back({.fraction = fraction, .color = Color{0.2, 0.9, 0.5}, .pid = pid});
  }
  strip.pressure = pressure;
}

}  // namespace SampleMenu
