#include "report.h"

#include <cstdio>
#include <fstream>
#include <map>

#include "targets.h"

namespace bench {
namespace {

using Members = std::vector<std::pair<std::string, std::string>>;

std::string quoted(const std::string& text) {
  std::string json = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') json += '\\';
    json += c;
  }
  return json + '"';
}

std::string number(double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%.6g", value);
  return text;
}

std::string object(const Members& members, const char* indent) {
  std::string json = "{";
  const char* comma = "";
  for (const auto& [name, value] : members) {
    json.append(comma).append("\n").append(indent).append("  ");
    json += quoted(name) + ": " + value;
    comma = ",";
  }
  return json + "\n" + indent + "}";
}

}  // namespace

void Report::section(const std::string& title) {
  std::printf("\n%-52s %10s  %-22s %s\n", title.c_str(), "median", "[quartiles]", "to reach");
}

void Report::ratio(const std::string& name, const Spread& value) {
  add({"ratios", name, value, true});
}

void Report::figure(const std::string& group, const std::string& name, const Spread& value) {
  add({group, name, value, true});
}

void Report::figure(const std::string& group, const std::string& name, double value) {
  add({group, name, {value, value, value}, false});
}

void Report::missing(const std::string& name, const std::string& reason) {
  std::printf("%-52s %10s  %s\n", name.c_str(), "missing", reason.c_str());
  std::fflush(stdout);
  missing_.emplace_back(name, reason);
}

void Report::add(Figure figure) {
  const auto& [median, lower, upper] = figure.value;
  std::string spread;
  if (figure.hasSpread) spread = "[" + number(lower) + ", " + number(upper) + "]";
  std::printf("%-52s %10.4g  %-22s", figure.name.c_str(), median, spread.c_str());
  if (const auto most = targetOf(figure.name)) {
    std::printf(" %4.2f %s", *most, median <= *most ? "reached" : "MISSED");
  }
  std::printf("\n");
  std::fflush(stdout);
  figures_.push_back(std::move(figure));
}

void Report::tellMissed() const {
  for (const auto& figure : figures_) {
    const auto most = targetOf(figure.name);
    if (!most || figure.value.median <= *most) continue;
    std::printf("MISSED   %s: %.4g instead of %.4g\n", figure.name.c_str(), figure.value.median,
                *most);
  }
  for (const auto& [name, reason] : missing_) {
    std::printf("MISSING  %s: %s\n", name.c_str(), reason.c_str());
  }
}

bool Report::writeJson(const std::string& path) const {
  std::vector<std::string> groups{"ratios"};
  std::map<std::string, Members> members;
  Members spreads;
  for (const auto& figure : figures_) {
    if (!members.contains(figure.group) && figure.group != "ratios") {
      groups.push_back(figure.group);
    }
    members[figure.group].emplace_back(figure.name, number(figure.value.median));
    if (figure.hasSpread) {
      spreads.emplace_back(figure.name, "[" + number(figure.value.lowerQuartile) + ", " +
                                            number(figure.value.upperQuartile) + "]");
    }
  }
  Members missing;
  for (const auto& [name, reason] : missing_) missing.emplace_back(name, quoted(reason));

  Members missed;
  for (const auto& figure : figures_) {
    const auto most = targetOf(figure.name);
    if (most && figure.value.median > *most) missed.emplace_back(figure.name, number(*most));
  }

  Members all;
  for (const auto& group : groups) all.emplace_back(group, object(members[group], "  "));
  all.emplace_back("spread", object(spreads, "  "));
  all.emplace_back("missing", object(missing, "  "));
  all.emplace_back("missed", object(missed, "  "));
  std::ofstream file(path);
  file << object(all, "") << "\n";
  return file.flush().good();
}

}  // namespace bench
