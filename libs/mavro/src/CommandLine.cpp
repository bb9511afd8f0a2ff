#include "CommandLine.h"

#include <cstddef>

namespace mavro {

namespace {

bool IsSeparator(char c) {
  return c == ' ' || c == '\t';
}

// Reads one argument from a cursor at its first character.
class ArgumentReader {
 public:
  ArgumentReader(std::string_view line, size_t& at) : line(line), at(at) {}

  std::string Read() {
    while (at < line.size() && (quoted || !IsSeparator(line[at]))) {
      if (line[at] == '\\') {
        ReadBackslashes();
      } else if (line[at] == '"') {
        quoted = !quoted;
        ++at;
      } else {
        argument += line[at++];
      }
    }
    return std::move(argument);
  }

 private:
  // Backslashes mean themselves unless a quote follows. Before a quote, each pair means one
  // backslash, and an odd one makes the quote an ordinary character.
  void ReadBackslashes() {
    size_t end = at;
    while (end < line.size() && line[end] == '\\') ++end;
    const size_t count = end - at;
    at = end;
    if (end == line.size() || line[end] != '"') {
      argument.append(count, '\\');
      return;
    }
    argument.append(count / 2, '\\');
    if (count % 2) {
      argument += '"';
      ++at;
    }
  }

  std::string_view line;
  size_t& at;
  bool quoted = false;
  std::string argument;
};

}  // namespace

std::vector<std::string> SplitCommandLine(std::string_view line) {
  std::vector<std::string> arguments;
  for (size_t at = 0; at < line.size();) {
    if (IsSeparator(line[at]))
      ++at;
    else
      arguments.push_back(ArgumentReader(line, at).Read());
  }
  return arguments;
}

std::string QuoteArgument(std::string_view argument) {
  if (!argument.empty() && argument.find_first_of(" \t\"") == std::string_view::npos)
    return std::string(argument);
  std::string quoted = "\"";
  size_t backslashes = 0;  // the run of them just before the current character
  for (char c : argument) {
    if (c == '"') quoted.append(backslashes + 1, '\\');
    backslashes = c == '\\' ? backslashes + 1 : 0;
    quoted += c;
  }
  quoted.append(backslashes, '\\');
  return quoted + '"';
}

}  // namespace mavro
