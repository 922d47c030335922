#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "fakes/scripted_platform.h"
#include "ui/menu_construction.h"

/// A process as the menu shows it.
class ShownProcess : public testing::Test {
 protected:
  ShownProcess() { resetMachine(); }

  MenuItem item() const { return MenuConstruction::processItem(process_); }
  std::vector<MenuItem> submenu() const { return item().submenu; }
  std::vector<std::string> submenuTitles() const {
    std::vector<std::string> titles;
    for (const MenuItem& entry : submenu()) {
      titles.push_back(entry.kind == MenuItem::Kind::separator ? "---" : entry.title);
    }
    return titles;
  }
  void protect() {
    process_.isProtected = true;
    process_.ownerName = "root";
  }

  VordaProcess process_{.pid = 77,
                        .displayName = "Ollama Server",
                        .product = "Ollama",
                        .memMB = 1536,
                        .commandLine = "ollama serve",
                        .labRole = LabRole::inference,
                        .ownerName = "ada",
                        .identity = 99};
};
