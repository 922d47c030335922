#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "scanner/command_line/invocation.h"

namespace recognition {

/// How invocationOf() finds out who runs. The launchers, and what they launch, are taken off in
/// invocation.cpp, the interpreters in interpreters.cpp. A function that takes
/// something off returns true when rest_ then begins with another program, and false when it is
/// known who runs.
class Unwrapping {
 public:
  explicit Unwrapping(Arguments arguments);
  Invocation result() { return std::move(result_); }

 private:
  enum class Launch {
    nothing,  ///< it is no launcher, or one that launches nothing
    another,  ///< rest_ begins with what it launches
    settled,  ///< it is known already what that is
  };

  /// "nginx: worker process", "VLLM::EngineCore": the program's name stands before the colon.
  void title(std::string_view name);
  void take();
  /// Takes the first of the words that are left for the program.
  bool step();
  void settle(std::string_view path, std::string program);

  static Launch launched(bool goesOn) { return goesOn ? Launch::another : Launch::settled; }
  /// Goes on to what a launcher of this name launches.
  Launch takeLauncher(std::string_view name);
  /// What a package runner runs: a package, or a program or script of the project.
  bool package();
  bool distributed(bool isModule);
  /// Of a program that runs applications (uvicorn, streamlit), the application says what it is.
  void host();

  /// None: it is no interpreter.
  std::optional<bool> takeInterpreter(std::string_view name);
  bool python();
  bool module(std::string_view word);
  bool pythonScript(std::string_view path);
  void script(std::string_view path);
  bool node(std::string_view name);
  bool nodePackage(std::string_view path, std::string_view inside);
  bool java();
  bool scriptOf();

  Invocation result_;
  Arguments all_;
  Arguments rest_;
};

}  // namespace recognition
