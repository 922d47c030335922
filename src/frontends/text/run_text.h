#pragma once

#include <cstdio>

/// Takes one sample of the machine and prints its menu, as TextFrontEnd::print does; returns
/// the program's exit status.
int runText(std::FILE* out);
