#pragma once

#include <string_view>
#include <vector>

namespace credentials {

/// Which part of a word is the credential.
enum class Part {
  whole,
  behindColon,
  behindPercent,
  behindComma,
  behindEquals,
  slashToAt,
  colonToAt,
  pass,
  likely,  ///< the whole of it, if it looks like a credential
};

enum class StepKind { literal, anything, credential, likely, option };

/// One step of a rule, read from the table.
struct Step {
  StepKind kind = StepKind::literal;
  std::string_view text;  // of a literal ("*" at an end cut off), or the option
  Part part = Part::whole;
  bool isBeginning = false;  // of a literal: the word goes on
  bool isEnding = false;
  bool mayBeGlued = false;  // of an option
  bool mayBeNext = false;
};

using Rule = std::vector<Step>;

/// What is known of one program.
struct Ways {
  std::vector<Rule> rules;
  bool isCarrier = false;
  bool isContainer = false;    // a carrier whose options name things like programs
  bool masksLastWord = false;  // htpasswd -b
  bool masksUrls = false;      // apprise
  bool masksDsns = false;      // "h=host,u=user,p=password"
};

/// By the name or path of a program; none when nothing is known of it.
const Ways* findProgram(std::string_view word);

/// Whether a program of this name reads a password from what is piped to it, whatever its
/// options.
bool readsPipedPassword(std::string_view name);

}  // namespace credentials
