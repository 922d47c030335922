#include "app/vorda_app_macos.h"

int main() {
  return VordaApp::main();
}
