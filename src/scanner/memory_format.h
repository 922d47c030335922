#pragma once

#include <string>

/// The ways in which an amount of memory is written. All round as printf does.
namespace MemoryFormat {

/// "1.50 GB" from 1024 MiB on, else "512 MB". The threshold is tested before rounding.
std::string detail(double mb);

/// As detail, but of one width for aligned columns: " 2.0 GB", "  10 MB", " 9.9 MB".
std::string compact(double mb);

/// As compact, but of no width, for use within a sentence: "2.0 GB".
std::string inSentence(double mb);

}  // namespace MemoryFormat
