#include "debug/GdbCommands.h"

#include <algorithm>
#include <array>
#include <cctype>

#include "CommandLine.h"

namespace zendry {

namespace {

constexpr auto cNone = std::string_view::npos;
constexpr std::string_view cBlanks = " \t";

// The first two are the ones that every gdb has had.
constexpr std::string_view cSettings[] = {
    "set edit off",
    "set confirm off",
    "set annotate 3",
    "set height 0",
    "set width 0",
    "set pagination off",
    "set style enabled off",
    "set logging enabled off",
    "set trace-commands off",
    "set debuginfod enabled off",
    "set breakpoint pending on",
    "set non-stop off",
    "set print elements 200",
    "set max-value-size 1048576",
    "set unwindonsignal on",
    "set startup-with-shell off",
};

// Given before the program is loaded, so that none of its scripts is run, even where the user's
// gdbinit has allowed all: a gdb reads that before these commands, or after them. The pager would
// wait for a key.
constexpr std::string_view cBeforeProgram[] = {
    "set height 0",
    "set trace-commands off",
    "set auto-load local-gdbinit off",
    "set auto-load python-scripts off",
    "set auto-load gdb-scripts off",
};

// Given after that and after the gdbinit. The libraries that come later have their printers in the
// system's folders.
constexpr std::string_view cAfterProgram[] = {
    "set height 0",
    "set trace-commands off",
    "set annotate 3",
    "set prompt (gdb) ",
    "set auto-load safe-path $debugdir:$datadir/auto-load",
    "set auto-load python-scripts on",
    "set auto-load gdb-scripts on",
};

// What a name may contain, beside letters and digits, that gdb reads as it is.
constexpr std::string_view cPlainMarks = "/._-+~@%^=\\";

bool HasLineEnd(std::string_view text) {
  return text.find_first_of(std::string_view("\n\r\0", 3)) != cNone;
}

std::string With(std::string_view command, std::string_view text) {
  std::string line = std::string(command) + " " + std::string(text);
  // A line that ends in a backslash goes on in the next one.
  if (line.ends_with('\\')) line += ' ';
  return line;
}

// True if gdb reads the name as it is. Anything but ASCII is part of a name for gdb.
bool IsPlainName(std::string_view file) {
  const auto isPlain = [](char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte >= 0x80 || std::isalnum(byte) || cPlainMarks.find(c) != cNone;
  };
  const auto first = static_cast<unsigned char>(file.front());
  const bool beginsWell =
      first >= 0x80 || std::isalpha(first) || first == '/' || first == '_' || first == '.';
  return beginsWell && std::all_of(file.begin(), file.end(), isPlain);
}

std::string LineText(int line) {
  return ":" + std::to_string(line);
}

// A text as a literal of Python.
std::string PythonText(std::string_view text) {
  std::string literal = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') literal += '\\';
    literal += c;
  }
  return literal + '"';
}

std::string PythonBreak(std::string_view file, int line, bool isTemporary) {
  return "python gdb.Breakpoint(source=" + PythonText(file) + ", line=" + std::to_string(line) +
         (isTemporary ? ", temporary=True)" : ")");
}

std::optional<std::string> WithPlace(std::string_view command, std::string_view file, int line) {
  const std::optional<std::string> place = GdbPlaceText(file, line);
  if (!place) return {};
  return With(command, *place);
}

std::optional<std::string> WithText(std::string_view command, std::string_view text) {
  if (!IsGdbText(text)) return {};
  return With(command, text);
}

// A word that any shell reads as the text.
std::string ShellWord(std::string_view text) {
  std::string word = "'";
  for (const char c : text) {
    if (c == '\'')
      word += "'\\''";
    else
      word += c;
  }
  return word + "'";
}

// True if gdb, which splits at blanks only, finds the same words without a shell.
bool IsSplitByBlanks(const std::vector<std::string>& words, std::string_view parameters) {
  if (parameters.find_first_of("\"\\") != cNone) return false;
  return std::none_of(words.begin(), words.end(), [](const std::string& word) {
    return word.empty() || word.find_first_of(cBlanks) != std::string::npos;
  });
}

void AddOptions(std::string& line, std::string_view option,
                std::span<const std::string_view> commands) {
  for (const std::string_view command : commands)
    line += " " + std::string(option) + " " + mavro::QuoteArgument(command);
}

}  // namespace

std::string GdbStartLine(std::string_view gdb, std::string_view program) {
  std::string line = mavro::QuoteArgument(gdb) + " --annotate=3 --quiet";
  AddOptions(line, "-iex", cBeforeProgram);
  AddOptions(line, "-ex", cAfterProgram);
  return line + " " + mavro::QuoteArgument(program);
}

std::span<const std::string_view> GdbSettings() {
  return cSettings;
}

bool IsGdbText(std::string_view text) {
  return !HasLineEnd(text) && text.find_first_not_of(cBlanks) != cNone;
}

std::optional<std::string> GdbPlaceText(std::string_view file, int line) {
  if (file.empty() || HasLineEnd(file)) return {};
  if (IsPlainName(file)) return std::string(file) + LineText(line);
  if (file.find_first_of("\"'") != cNone) return {};
  return '"' + std::string(file) + '"' + LineText(line);
}

std::optional<std::string> GdbBreak(std::string_view file, int line, std::string_view condition) {
  if (file.empty() || HasLineEnd(file) || HasLineEnd(condition)) return {};
  const std::optional<std::string> place = GdbPlaceText(file, line);
  if (!place) return PythonBreak(file, line, false);
  if (!IsGdbText(condition)) return With("break", *place);
  return With("break", *place + " if " + std::string(condition));
}

std::optional<std::string> GdbTemporaryBreak(std::string_view file, int line) {
  if (file.empty() || HasLineEnd(file)) return {};
  const std::optional<std::string> place = GdbPlaceText(file, line);
  return place ? With("tbreak", *place) : PythonBreak(file, line, true);
}

std::optional<std::string> GdbClear(std::string_view file, int line) {
  return WithPlace("clear", file, line);
}

std::string GdbDelete(int number) {
  return "delete " + std::to_string(number);
}

std::optional<std::string> GdbCondition(int number, std::string_view expression) {
  if (HasLineEnd(expression)) return {};
  const std::string command = "condition " + std::to_string(number);
  return IsGdbText(expression) ? With(command, expression) : command;
}

std::optional<std::string> GdbUntil(std::string_view file, int line) {
  return WithPlace("until", file, line);
}

std::string_view GdbStepCommand(GdbStep kind) {
  constexpr std::array<std::string_view, 4> cCommands = {"step", "next", "finish", "nexti"};
  return cCommands[static_cast<size_t>(kind)];
}

std::string GdbSelectFrame(int level) {
  return "frame " + std::to_string(level);
}

std::optional<std::string> GdbDisplayCommand(std::string_view expression) {
  return WithText("display", expression);
}

std::optional<std::string> GdbPrint(std::string_view expression) {
  return WithText("print", expression);
}

std::string GdbUndisplay(int number) {
  return "undisplay " + std::to_string(number);
}

std::optional<std::vector<std::string>> GdbArguments(std::string_view parameters) {
  if (HasLineEnd(parameters)) return {};
  constexpr std::string_view cWithShell = "set startup-with-shell on";
  constexpr std::string_view cWithoutShell = "set startup-with-shell off";
  const std::vector<std::string> words = mavro::SplitCommandLine(parameters);
  using Commands = std::vector<std::string>;
  if (words.empty()) return Commands{};
  if (parameters.find_first_of("<>|&;") != cNone)
    return Commands{std::string(cWithShell), With("set args", parameters)};
  if (IsSplitByBlanks(words, parameters))
    return Commands{std::string(cWithoutShell), With("set args", parameters)};
  std::string line;
  for (const std::string& word : words) line += (line.empty() ? "" : " ") + ShellWord(word);
  return Commands{std::string(cWithShell), With("set args", line)};
}

std::optional<std::string> GdbTerminal(std::string_view path) {
  return WithText("set inferior-tty", path);
}

}  // namespace zendry
