// Prints the record of every process that a first scan finds, one a line.
#include <cstdio>

#include "scanner/process_scanner.h"
#include "tools/record_line.h"

int main() {
  for (const auto& process : ProcessScanner::scan(0)) std::puts(recordLine(process).c_str());
}
