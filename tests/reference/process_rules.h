#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "scanner/lab_role.h"

/// The rules by which processes are recognised and named, written down a second time: one
/// find() after the other, no table, no search, and of the program nothing but text/unicode.h. Slow
/// and plain, so that it can be read against the rules line by line; randomised tests and
/// fuzzers compare the program with it.
namespace reference {

using Strings = std::vector<std::string>;

/// The texts that are evidence of training, of LoRA, of a training framework, of a model server and
/// of an agent: written by hand, not taken from the program, so that one that is mistyped there
/// shows.
///@{
extern const Strings trainingMarkers;
extern const Strings loraMarkers;
extern const Strings frameworkMarkers;
extern const Strings serverMarkers;
extern const Strings agentMarkers;
///@}

LabRole classifyLabRole(const std::string& name, const Strings& cmdline, const std::string& joined);

bool isTrainingProcess(const std::string& exe, const std::string& lower, const Strings& args,
                       bool isServing);

std::optional<std::string> flag(const Strings& arguments, const Strings& names);

/// Display name and product.
std::pair<std::string, std::string> friendlyName(const Strings& cmdline,
                                                 const std::string& fallback);

std::string basenameModel(const std::string& model);

/// For text that is UTF-8.
std::string redactSecrets(const std::string& commandLine);

}  // namespace reference
