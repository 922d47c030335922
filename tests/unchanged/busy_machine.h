#pragma once

#include <string>

#include "fakes/scripted_platform.h"
#include "platform/processes.h"

/// A machine with something of everything that a menu can show, but for graphics cards.
inline void scriptBusyMachine() {
  resetMachine();
  constexpr std::uint64_t kMiB = 1 << 20;
  auto& all = machine().processes;
  for (int i = 0; i < 40; ++i) {
    all.push_back({.pid = 100 + i,
                   .arguments = {"/usr/lib/editor-of-a-long-name/editor", std::to_string(i)},
                   .footprintMB = 40.0 + i,
                   .parent = 99});
  }
  all.push_back({.pid = 200,
                 .arguments = {"/usr/bin/ollama", "serve"},
                 .footprintMB = 2000,
                 .fileMB = 1500,
                 .mappedFiles = {{"/models/a-model-of-a-long-name.gguf", 1400 * kMiB}}});
  all.push_back({.pid = 201,
                 .arguments = {"/usr/bin/ollama", "runner", "--model", "/models/x.gguf"},
                 .footprintMB = 900,
                 .parent = 200});
  // Of a family with one that is listed, and too small to be listed itself.
  all.push_back({.pid = 202, .arguments = {"/usr/bin/helper"}, .footprintMB = 10, .parent = 200});
  all.push_back(
      {.pid = 210, .arguments = {"torchrun", "--nproc_per_node=2", "train_lora.py"}, .parent = 1});
  for (const int pid : {211, 212}) {
    all.push_back({.pid = pid,
                   .arguments = {"python3", "train_lora.py", "--lora_rank", "16", "--hf-token",
                                 "hf_AbCdEfGhIjKlMnOpQrStUvWxYz0123456789"},
                   .footprintMB = 3000,
                   .parent = 210});
  }
  all.push_back({.pid = 220,
                 .arguments = {"/usr/bin/node", "mcp-server-filesystem", "--stdio"},
                 .effectiveUid = 1001});
  all.push_back({.pid = 230,
                 .arguments = {"ollama-title serve"},
                 .executable = "/usr/bin/ollama",
                 .title = "ollama-title serve"});
  machine().launchAgentFiles = {
      {"ollama", "/home/ada/.config/systemd/user/ollama.service", {"ollama", "serve"}, true},
      {"an-ordinary-service", "/etc/systemd/user/an-ordinary-service.service", {"sync"}, false}};
  machine().loadedLaunchAgents = {{"ollama", 200}, {"an-ordinary-service", std::nullopt}};
}

/// What it was asked is remembered in lists that grow: makes room in them.
inline void forgetQuestions() {
  machine().footprintsRead.clear();
  machine().executablesAsked.clear();
  machine().manifestsRead.clear();
}
