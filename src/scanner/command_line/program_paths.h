#pragma once

#include <optional>
#include <string>
#include <string_view>

/// What the path of a file that is run, or the word of a package, says of who it is.
namespace recognition {

/// The name of a file without what says in which language it is written.
std::string_view withoutSuffix(std::string_view name);

/// Whether it says in which.
bool isSource(std::string_view name);

/// "pkg@latest", "pkg==1.2", "pkg[extra]", "@scope/pkg@1": the package alone, normalized.
std::string packageName(std::string_view word);

/// The nearest folder on the way to a file whose name says whose it is, normalized; "": none does.
std::string nearestFolder(std::string_view path);

/// What a folder adds to a script of a name that says nothing; "" to any other's.
std::string tellingFolder(std::string_view path);

/// "pkg.mod" of …/site-packages/pkg/mod.py; "" of any other place.
std::string installedModule(std::string_view path);

/// Of a path into node_modules what stands behind it; none for another path.
std::optional<std::string_view> inNodeModules(std::string_view path);

/// "@scope/pkg" of "@scope/pkg/dist/cli.js".
std::string_view packageOfPath(std::string_view path);

}  // namespace recognition
