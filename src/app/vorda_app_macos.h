#pragma once

/// The program on macOS: an application without a Dock icon, whose one window is Settings.
namespace VordaApp {

/// Runs the application until the user quits it, and returns the exit status.
int main();

}  // namespace VordaApp
