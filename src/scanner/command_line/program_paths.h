#pragma once

#include <optional>
#include <string>
#include <string_view>

/// What the path of a file that is run, or the word for a package, tells about the program.
namespace recognition {

/// The name of a file without the ending of its language: "train" of "train.py".
std::string_view withoutSuffix(std::string_view name);

/// Whether it has such an ending.
bool isSource(std::string_view name);

/// "pkg@latest", "pkg==1.2", "pkg[extra]", "@scope/pkg@1": the package alone, normalized.
std::string packageName(std::string_view word);

/// The nearest folder above a file that does not have one of the usual names ("src", "bin"),
/// normalized; "" for none.
std::string nearestFolder(std::string_view path);

/// That folder, for a script whose own name says nothing ("main.py"); "" for any other.
std::string tellingFolder(std::string_view path);

/// "pkg.mod" of …/site-packages/pkg/mod.py; "" of any other place.
std::string installedModule(std::string_view path);

/// Of a path into node_modules what stands behind it; none for another path.
std::optional<std::string_view> inNodeModules(std::string_view path);

/// "@scope/pkg" of "@scope/pkg/dist/cli.js".
std::string_view packageOfPath(std::string_view path);

}  // namespace recognition
