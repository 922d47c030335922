#include "tools/temp_folder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>
#include <fstream>

TempFolder::TempFolder() {
  std::string name = std::filesystem::temp_directory_path() / "vorda-test-XXXXXX";
  if (mkdtemp(name.data()) == nullptr || chmod(name.c_str(), 0755) != 0) {
    ADD_FAILURE() << "no temporary folder " << name;
  }
  path_ = name;
}

TempFolder::~TempFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

void TempFolder::write(std::string_view name, std::string_view bytes) const {
  const auto file = path_ / name;
  std::filesystem::create_directories(file.parent_path());
  std::ofstream stream(file, std::ios::binary);
  stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  if (!stream.flush()) ADD_FAILURE() << "cannot write " << file;
}

void TempFolder::link(std::string_view name, std::string_view target) const {
  const auto file = path_ / name;
  std::filesystem::create_directories(file.parent_path());
  std::filesystem::create_symlink(target, file);
}
