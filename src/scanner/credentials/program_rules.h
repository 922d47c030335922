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
  std::string_view text;  // a literal (without a "*" at its end), or an option
  Part part = Part::whole;
  bool isBeginning = false;  // a literal that the word only begins with
  bool isEnding = false;
  bool mayBeGlued = false;  // an option whose value may be in the same word
  bool mayBeNext = false;
};

using Rule = std::vector<Step>;

/// What is known of one program.
struct Ways {
  std::vector<Rule> rules;
  bool isLauncher = false;
  bool isContainer = false;    // a launcher with options whose values may look like programs
  bool masksLastWord = false;  // htpasswd -b
  bool masksUrls = false;      // apprise
  bool masksDsns = false;      // "h=host,u=user,p=password"
};

/// The rules for a program, by its name or path; nullptr when none are known.
const Ways* findProgram(std::string_view word);

/// Whether a program of this name reads a password from its standard input without any option for
/// it.
bool readsPipedPassword(std::string_view name);

}  // namespace credentials
