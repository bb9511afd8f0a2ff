#include <algorithm>
#include <filesystem>

#include "CommandLine.h"
#include "FileText.h"
#include "project/ImportCommands.h"
#include "project/RiskySwitches.h"

// The arguments of a compiler, and what becomes of each in a project.

namespace zendry {

namespace {

namespace fs = std::filesystem;

enum class Use {
  cInclude,  // a folder for headers
  cMacro,
  cStandard,
  cWithFile,  // its value is a file or folder
  cPair,      // kept with its value
  cKeep,
  cOutput,
  cSilent,  // the project decides it itself, or it doesn't concern the compiler
  cSilentPair,
};

struct Row {
  std::string_view name;
  Use use;
  bool isWhole = false;  // else the name is the beginning of a switch
};

// The first row that fits decides, after the rows of risky switches. A switch that no row fits is
// dropped and said.
constexpr Row cRows[] = {
    {"-isystem", Use::cInclude},
    {"-iquote", Use::cInclude},
    {"-idirafter", Use::cInclude},
    {"-include", Use::cWithFile},
    {"-imacros", Use::cWithFile},
    {"-isysroot", Use::cPair, true},
    {"--sysroot", Use::cKeep},
    {"-I", Use::cInclude},
    {"-D", Use::cMacro},
    {"-U", Use::cMacro},
    {"-std=", Use::cStandard},
    {"--std=", Use::cStandard},
    {"-ansi", Use::cStandard, true},
    {"--param", Use::cPair, true},
    {"-o", Use::cOutput},
    {"-c", Use::cSilent, true},
    {"-g", Use::cSilent},
    {"-O", Use::cSilent},
    {"-MF", Use::cSilentPair, true},
    {"-MT", Use::cSilentPair, true},
    {"-MQ", Use::cSilentPair, true},
    {"-MJ", Use::cSilentPair, true},
    {"-M", Use::cSilent},
    {"-pipe", Use::cSilent, true},
    {"-fdiagnostics", Use::cSilent},
    {"-fcolor-diagnostics", Use::cSilent},
    {"-ffile-prefix-map", Use::cSilent},
    {"-fdebug-prefix-map", Use::cSilent},
    {"-fmacro-prefix-map", Use::cSilent},
    {"-l", Use::cSilent},
    {"-L", Use::cSilent},
    {"-f", Use::cKeep},
    {"-m", Use::cKeep},
    {"-W", Use::cKeep},
    {"-w", Use::cKeep, true},
    {"-pedantic", Use::cKeep},
    {"-pthread", Use::cKeep, true},
    {"-nostdinc", Use::cKeep},
    {"-undef", Use::cKeep, true},
    {"-traditional", Use::cKeep},
};

const Row* RowOf(std::string_view argument) {
  for (const Row& row : cRows)
    if (row.isWhole ? argument == row.name : argument.starts_with(row.name)) return &row;
  return nullptr;
}

std::string FullPath(const std::string& directory, const std::string& path) {
  return (fs::path(directory) / path).lexically_normal().string();
}

class SwitchReader {
 public:
  SwitchReader(const std::vector<std::string>& itsArguments, const std::string& itsDirectory)
      : arguments(itsArguments), directory(itsDirectory) {}

  CommandSwitches Read() {
    for (at = 0; at < arguments.size(); ++at) Take(arguments[at]);
    return std::move(switches);
  }

 private:
  // The text after the name, else the next argument.
  std::string ValueOf(const std::string& argument, const Row& row) {
    if (argument.size() > row.name.size()) return argument.substr(row.name.size());
    return at + 1 < arguments.size() ? arguments[++at] : "";
  }

  void Take(const std::string& argument) {
    const bool isMacro = argument.starts_with("-Wp,-D") || argument.starts_with("-Wp,-U");
    // After a further comma another switch may follow.
    if (isMacro && argument.find(',', 4) == std::string::npos)
      return switches.macros.push_back(argument.substr(4));
    if (argument.starts_with("-Wp,-M")) return;
    const Row* row = RowOf(argument);
    // A file to write that the project names itself is no risk.
    const RiskySwitch* risk = FindRiskySwitch(argument);
    if (risk && !(row && risk->risk == Risk::cWrites)) return TakeRisky(argument, *risk);
    // The compiler, a launcher before it, and the source begin with no dash.
    if (!row) {
      if (argument.size() > 1 && argument.starts_with('-')) switches.dropped.push_back(argument);
      return;
    }
    switch (row->use) {
      case Use::cInclude: {
        const std::string value = ValueOf(argument, *row);
        if (!value.empty()) switches.includeFolders.push_back(FullPath(directory, value));
        return;
      }
      case Use::cMacro:
        switches.macros.push_back(std::string(row->name) + ValueOf(argument, *row));
        return;
      case Use::cStandard:
        switches.standard = argument.starts_with("--") ? argument.substr(1) : argument;
        return;
      case Use::cWithFile:
        switches.others.push_back(std::string(row->name) + " " +
                                  mavro::QuoteArgument(FileAfter(ValueOf(argument, *row))));
        return;
      case Use::cOutput:
        switches.output = ValueOf(argument, *row);
        return;
      case Use::cKeep:
        switches.others.push_back(mavro::QuoteArgument(argument));
        return;
      case Use::cSilent:
        return;
      case Use::cPair:
      case Use::cSilentPair:
        return TakePair(argument, *row);
    }
  }

  void TakePair(const std::string& argument, const Row& row) {
    const std::string value = at + 1 < arguments.size() ? arguments[++at] : "";
    if (row.use == Use::cPair)
      switches.others.push_back(argument + " " + mavro::QuoteArgument(value));
  }

  void TakeRisky(const std::string& argument, const RiskySwitch& risk) {
    const bool isPair = risk.takesNext && argument.size() == risk.begin.size();
    if (!isPair) return switches.risky.push_back(mavro::QuoteArgument(argument));
    const std::string value = at + 1 < arguments.size() ? arguments[++at] : "";
    switches.risky.push_back(argument + " " + mavro::QuoteArgument(value));
  }

  // A file beside the source is found by its name alone too.
  std::string FileAfter(const std::string& value) const {
    const std::string full = FullPath(directory, value);
    return mavro::FileExists(full) ? full : value;
  }

  const std::vector<std::string>& arguments;
  const std::string& directory;
  size_t at = 0;
  CommandSwitches switches;
};

}  // namespace

CommandSwitches ReadSwitches(const std::vector<std::string>& arguments,
                             const std::string& directory) {
  return SwitchReader(arguments, directory).Read();
}

std::vector<std::string> SplitShellWords(std::string_view command) {
  std::vector<std::string> words;
  bool isOpen = false;  // a word has begun, maybe an empty one in quotes
  char quote = 0;
  for (size_t i = 0; i < command.size(); ++i) {
    const char c = command[i];
    const bool isBlank = c == ' ' || c == '\t' || c == '\n' || c == '\r';
    if (!quote && isBlank) {
      isOpen = false;
      continue;
    }
    if (!isOpen) words.emplace_back();
    isOpen = true;
    if (quote == '\'') {
      if (c == quote)
        quote = 0;
      else
        words.back() += c;
    } else if (c == '\\' && i + 1 < command.size()) {
      // In double quotes a backslash before another character stays.
      const char next = command[++i];
      const bool isMeant = !quote || next == '"' || next == '\\' || next == '$' || next == '`';
      if (!isMeant) words.back() += c;
      words.back() += next;
    } else if (quote ? c == quote : c == '"' || c == '\'') {
      quote = quote ? '\0' : c;
    } else {
      words.back() += c;
    }
  }
  return words;
}

}  // namespace zendry
