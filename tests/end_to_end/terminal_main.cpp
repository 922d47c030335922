#include <gtest/gtest.h>

#include <clocale>

int main(int argc, char** argv) {
  std::setlocale(LC_CTYPE, "C.UTF-8");  // the screen model measures characters as a terminal does
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
