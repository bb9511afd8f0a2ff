#include "editor/SourceTidy.h"

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <utility>
#include <vector>

#include "CommandLine.h"
#include "SpawnConsole.h"
#include "base/Paths.h"
#include "code/TidyEdits.h"
#include "editor/ApplyEdits.h"
#include "editor/CppEditor.h"

namespace zendry {

namespace {

// A tool that doesn't answer in this time is stopped.
constexpr const char* cTimeLimit = "timeout --kill-after=1 5 ";
constexpr int cTimedOut = 124, cKilled = 137;
constexpr size_t cLongestList = 64 * 1024 * 1024;

// A text for a child to read that is in no folder.
class TextFile {
 public:
  explicit TextFile(std::string_view text) : file(memfd_create("source", MFD_CLOEXEC)) {
    while (!text.empty()) {
      const ssize_t written = write(file, text.data(), text.size());
      if (written <= 0) break;
      text.remove_prefix(static_cast<size_t>(written));
    }
    isWhole = file >= 0 && text.empty();
  }
  ~TextFile() {
    if (file >= 0) close(file);
  }
  TextFile(const TextFile&) = delete;
  TextFile& operator=(const TextFile&) = delete;

  bool IsWhole() const { return isWhole; }
  std::string Path() const {
    return "/proc/" + std::to_string(getpid()) + "/fd/" + std::to_string(file);
  }

 private:
  const int file;
  bool isWhole = false;
};

struct Lines {
  int first, last;  // from 0
};

Lines LinesToTidy(const CppEditor& editor) {
  const auto [start, end] = editor.Selection();
  if (start == end) return {0, editor.LineCount() - 1};
  const int last = editor.LineOf(end);
  const bool endsBefore = last > editor.LineOf(start) && end == editor.LineStart(last);
  return {editor.LineOf(start), endsBefore ? last - 1 : last};
}

struct Answer {
  int exitCode = -1;
  std::string list;
};

Answer AskTool(const std::string& text, const std::string& style, const std::string& range) {
  const TextFile file(text);
  Answer answer;
  if (!file.IsWhole()) return answer;
  mavro::SpawnConsole runner;
  const auto keep = [&answer](const std::string& line) {
    if (answer.list.size() < cLongestList) answer.list.append(line).append("\n");
  };
  runner.SetOutput(keep, "");
  const std::string line = cTimeLimit + std::string("clang-format --output-replacements-xml ") +
                           mavro::QuoteArgument("--style=" + style) + range + " " + file.Path();
  if (runner.Execute(line, mavro::SpawnConsole::Mode::cBlocking)) answer.exitCode = runner.exitCode;
  return answer;
}

std::string Changed(size_t places, const std::string& by) {
  if (places == 0) return "Nothing to tidy: " + by;
  return "Tidied at " + std::to_string(places) + (places == 1 ? " place: " : " places: ") + by;
}

std::string TidyByTool(CppEditor& editor, const std::string& text, Lines lines) {
  const bool isSelected = editor.Selection().first != editor.Selection().second;
  const std::string range = isSelected ? " --lines=" + std::to_string(lines.first + 1) + ":" +
                                             std::to_string(lines.last + 1)
                                       : "";
  const std::string file = NearestStyle(editor.fileName);
  const std::string style = file.empty() ? StyleOf(editor.Habits(), text) : "file:" + file;
  const unsigned long changes = editor.ChangeCount();
  const Answer answer = AskTool(text, style, range);
  if (answer.exitCode == cTimedOut || answer.exitCode == cKilled)
    return "Not tidied: clang-format takes too long";
  const auto edits = ReadReplacements(answer.list, text.size());
  if (answer.exitCode != 0) return "Not tidied: clang-format has failed";
  if (!edits) return "Not tidied: clang-format can't read this source";
  if (editor.ChangeCount() != changes) return "Not tidied: the text has changed";
  std::vector<TextEdit> narrowed = Narrowed(*edits, text);
  const auto first = static_cast<size_t>(editor.LineStart(lines.first));
  const auto last = static_cast<size_t>(editor.LineEnd(lines.last));
  // The tool also formats the line after the last.
  std::erase_if(narrowed, [&](const TextEdit& edit) {
    return isSelected && (edit.offset < first || edit.offset + edit.length > last);
  });
  ApplyTextEdits(editor, narrowed);
  return Changed(narrowed.size(), file.empty() ? "clang-format in the file's own style"
                                               : "clang-format with " + file);
}

std::string TidyByRules(CppEditor& editor, const std::string& text, Lines lines) {
  const auto edits = Narrowed(IndentEdits(text, editor.Habits(), lines.first, lines.last), text);
  ApplyTextEdits(editor, edits);
  return Changed(edits.size(), "indented by Zendry's own rules, as there is no clang-format");
}

}  // namespace

std::string NearestStyle(const std::string& path) {
  std::filesystem::path folder = std::filesystem::path(path).parent_path();
  while (!folder.empty()) {
    for (const char* name : {".clang-format", "_clang-format"}) {
      std::error_code ignored;
      if (std::filesystem::is_regular_file(folder / name, ignored)) return folder / name;
    }
    if (folder == folder.parent_path()) break;
    folder = folder.parent_path();
  }
  return {};
}

std::string TidySource(CppEditor& editor) {
  if (!editor.language) return "Only sources of C and C++ are tidied";
  if (editor.IsReadOnly()) return "Not tidied: the text is read only";
  if (editor.IsHuge() || editor.LinesNotShown() > 0)
    return "Not tidied: the text is too large or has lines that are not shown";
  const std::string text = editor.GetRange(0, editor.Length());
  const Lines lines = LinesToTidy(editor);
  return IsOnPath("clang-format") && IsOnPath("timeout") ? TidyByTool(editor, text, lines)
                                                         : TidyByRules(editor, text, lines);
}

}  // namespace zendry
