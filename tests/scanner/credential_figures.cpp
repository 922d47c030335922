// Tells how many secrets of labelled command lines the mask shows, and how many innocent lines
// it masks: credential_figures FILE... (see scanner/labelled_lines.h for their form).

#include <cstdio>
#include <exception>

#include "scanner/labelled_lines.h"

int main(int argc, char** argv) {
  try {
    for (int i = 1; i < argc; ++i) {
      std::printf("%s\n", argv[i]);
      for (const auto& [kind, figures] : maskFigures(readLabelledLines(argv[i]))) {
        std::printf("%-9s %4d lines, %3d %s (%.1f of 100)\n", kind.c_str(), figures.lines,
                    figures.wrong, kind == "innocent" ? "masked" : "shown",
                    100.0 * figures.wrong / figures.lines);
        for (const auto& line : figures.wrongLines) std::printf("  %s\n", line.c_str());
      }
    }
  } catch (const std::exception& error) {
    std::fprintf(stderr, "credential_figures: %s\n", error.what());
    return 1;
  }
  return argc > 1 ? 0 : 2;
}
