#include <algorithm>

#include "scanner/command_line/invocation.h"
#include "scanner/command_line/program_names.h"
#include "scanner/command_line/program_paths.h"
#include "text/path.h"

namespace recognition {

std::vector<std::string> Invocation::names() const {
  std::vector<std::string> names;
  const auto add = [&names](std::string name) {
    if (!name.empty() && std::ranges::find(names, name) == names.end()) {
      names.push_back(std::move(name));
    }
  };
  // "a.b.c", then "a.b", then "a"
  const auto addWithParents = [&add](std::string name) {
    while (!name.empty()) {
      add(name);
      const auto dot = name.rfind('.');
      if (dot == std::string::npos) break;
      name.resize(dot);
    }
  };
  // The module that uvicorn and the like run is mostly called "app" or "main": that tells nothing.
  if (!isServedByHost || module.find('.') != std::string::npos) addWithParents(module);
  add(package);
  add(std::string(text::lastPathComponent(package)));
  if (!folder.empty()) {
    add(folder + "/" + script);
    add(folder);
  }
  if (!script.empty() && package.empty()) {
    // A script with a name that many have is known by an option that only one of them has.
    if (isListed("main.py launch.py server.py webui.py app.py run.py api.py train-network.py "
                 "train.py train-async.py",
                 script)) {
      for (std::size_t i = 0; i < std::min<std::size_t>(arguments.size(), 64); ++i) {
        if (!isOption(arguments[i])) continue;
        const bool isPort = arguments[i].starts_with("--port");
        const auto end = isPort ? std::string_view::npos : arguments[i].find('=');
        std::string option = script + "+" + normalized(arguments[i].substr(0, end));
        if (i + 1 < arguments.size() && arguments[i] == "--port")
          option += "=" + normalized(arguments[i + 1]);
        add(std::move(option));
      }
    }
    // A script of a known folder, by its path or by the Python of that folder's own.
    const bool isInFolder = path.find('/') != std::string_view::npos;
    const std::string home = isInFolder ? nearestFolder(path) : project;
    if (!home.empty()) add(home + "/" + script);
    add(script);
  }
  // The main program of a bundle is the application, not the command of the same name.
  if (path.find(".app/Contents/MacOS/") != std::string_view::npos && script.empty() &&
      module.empty() && package.empty()) {
    add(program + ".app");
  } else if (!program.empty() && !isServedByHost) {
    const auto dot = program.rfind('.');
    if (dot != std::string::npos) add("*" + program.substr(dot));
    // Other programs are called "rl", too, but only one is run as "rl @ config.toml": it is known
    // as "rl+@".
    if (!arguments.empty() && arguments.front() == "@") add(program + "+@");
    addWithParents(program);
  }
  return names;
}

}  // namespace recognition
