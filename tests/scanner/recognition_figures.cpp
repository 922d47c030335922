// Tells how many command lines of a corpus get the role and the name that people would give:
// recognition_figures [--wrong] [--without-table] FILE... (see scanner/recognition_corpus.h).

#include <algorithm>
#include <cstdio>
#include <exception>
#include <span>
#include <string_view>

#include "scanner/recognition_corpus.h"

int main(int argc, char** argv) {
  bool showsWrong = false;
  bool withoutTable = false;
  const recognition::Products nobody{std::span<const recognition::Product>{}};
  try {
    std::printf("roles right       names right\n");
    for (int i = 1; i < argc; ++i) {
      const std::string_view word = argv[i];
      if (word == "--wrong") {
        showsWrong = true;
        continue;
      }
      if (word == "--without-table") {
        withoutTable = true;
        continue;
      }
      const auto figures = corpusFigures(readCorpus(argv[i]),
                                         withoutTable ? nobody : recognition::Products::known());
      std::printf("%4d of %4d %4.0f%%  %4d of %4d %4.0f%%  %s\n", figures.rolesRight, figures.lines,
                  100.0 * figures.rolesRight / std::max(figures.lines, 1), figures.namesRight,
                  figures.named, 100.0 * figures.namesRight / std::max(figures.named, 1), argv[i]);
      if (!showsWrong) continue;
      for (const auto& line : figures.wrong) std::printf("  %.300s\n", line.c_str());
    }
  } catch (const std::exception& error) {
    std::fprintf(stderr, "recognition_figures: %s\n", error.what());
    return 1;
  }
  return argc > 1 ? 0 : 2;
}
