#include "editor/CodeIndent.h"

#include <algorithm>
#include <vector>

#include "SciEditor.h"
#include "UndoStep.h"
#include "base/TrimText.h"

namespace zendry {

namespace {

constexpr int cMostLearned = 128 * 1024;
// How far before a line its surroundings are read: this takes well below a millisecond. Code is
// seldom open for longer; then the lines above give the place.
constexpr int cMostRead = 24 * 1024;
constexpr std::string_view cBlanks = " \t";

// Styles of the lexer in which no code can begin.
bool IsInsideWords(int style) {
  constexpr int cLeftOut = 64;
  constexpr int cInside[] = {1, 2, 3, 6, 7, 15, 20};
  return std::find(std::begin(cInside), std::end(cInside), style % cLeftOut) != std::end(cInside);
}

int ColumnsBefore(std::string_view text, int tabWidth) {
  int columns = 0;
  for (const char c : text) {
    if (c != ' ' && c != '\t') break;
    columns += c == '\t' ? tabWidth - columns % tabWidth : 1;
  }
  return columns;
}

std::vector<std::string_view> LinesOf(std::string_view text) {
  std::vector<std::string_view> lines;
  for (size_t at = 0; at < text.size();) {
    const size_t end = std::min(text.find('\n', at), text.size() - 1) + 1;
    lines.push_back(text.substr(at, end - at));
    at = end;
  }
  return lines;
}

// The first line of a copied text often lacks its blanks; the other lines tell them.
int IndentOfFirst(const std::vector<std::string_view>& lines, int tabWidth) {
  const int own = ColumnsBefore(lines.front(), tabWidth);
  if (own > 0) return own;
  int least = INT32_MAX;
  for (size_t i = 1; i < lines.size(); ++i)
    if (const std::string_view words = Trimmed(lines[i]); !words.empty() && words.front() != '#')
      least = std::min(least, ColumnsBefore(lines[i], tabWidth));
  return least == INT32_MAX ? 0 : least;
}

// True if a character typed at the end of `line`, the text before the caret, may change its place.
bool MovesLine(std::string_view line, char typed) {
  constexpr std::string_view cSigns = "<>&|?:.,=+-*/{}()[]#";
  if (line.find_first_not_of(cSigns) == line.npos) return line.size() <= 2;
  if (typed == ':') return true;
  if (typed != ' ' && typed != '{' && typed != '(') return false;
  line = Trimmed(line.substr(0, line.size() - 1));
  return line == "else" || line == "while" || line == "catch" || line == "case";
}

}  // namespace

IndentHabits CodeIndent::Habits() const {
  if (learned) return *learned;
  const mavro::EditorOptions& options = *editor.options;
  return UsualHabits(options.indentSize > 0 ? options.indentSize : options.tabWidth,
                     options.tabWidth, options.useTabs);
}

void CodeIndent::Learn() {
  learned.reset();
  ownLine = -1;
  const std::string text = editor.GetRange(0, std::min(editor.Length(), cMostLearned));
  learned = LearnHabits(text, Habits());
  ApplyTo(*editor.options);
  Tell(mavro::SCI_GETTABWIDTH, mavro::SCI_SETTABWIDTH, learned->tabWidth);
  Tell(mavro::SCI_GETINDENT, mavro::SCI_SETINDENT, learned->unit);
  Tell(mavro::SCI_GETUSETABS, mavro::SCI_SETUSETABS, learned->useTabs);
}

// The whole text is painted again for a value that is the same.
void CodeIndent::Tell(unsigned get, unsigned set, int value) {
  if (editor.Send(get) != value) editor.Send(set, static_cast<std::uintptr_t>(value));
}

void CodeIndent::ApplyTo(mavro::EditorOptions& options) const {
  if (!learned) return;
  options.useTabs = learned->useTabs;
  options.tabWidth = learned->tabWidth;
  options.indentSize = learned->unit;
}

// After the last function that ends at the margin, else outside of comments and strings.
int CodeIndent::WindowStart(int line) const {
  const int end = editor.LineStart(line);
  const int least = end > cMostRead ? editor.LineOf(end - cMostRead) + 1 : 0;
  const std::string text = editor.GetRange(editor.LineStart(least), end);
  if (const size_t function = text.rfind("\n}"); function != text.npos)
    return editor.LineStart(least) + static_cast<int>(function) + 1;
  const auto styleOf = [this](int which) {
    return static_cast<int>(
        editor.Send(mavro::SCI_GETSTYLEAT, static_cast<std::uintptr_t>(editor.LineStart(which))));
  };
  int at = least;
  while (least > 0 && at < line && IsInsideWords(styleOf(at))) ++at;
  return editor.LineStart(at);
}

std::optional<int> CodeIndent::ColumnsOf(int line) const {
  return IndentOfLastLine(editor.GetRange(WindowStart(line), editor.LineEnd(line)), Habits());
}

std::optional<int> CodeIndent::ColumnsOf(int line, std::string_view instead) const {
  std::string text = editor.GetRange(WindowStart(line), editor.LineStart(line));
  return IndentOfLastLine(text.append(instead), Habits());
}

bool CodeIndent::IsOwn(int line) const {
  return line == ownLine && editor.Indentation(line) == ownColumns;
}

// What will be typed before a closer that was written automatically begins the line.
std::optional<int> CodeIndent::ColumnsToType(int line) const {
  const auto first = static_cast<int>(
      editor.Send(mavro::SCI_GETLINEINDENTPOSITION, static_cast<std::uintptr_t>(line)));
  const bool isClosed = editor.CaretPosition() == first && editor.IsAutomatic(first);
  return isClosed ? ColumnsOf(line, "") : ColumnsOf(line);
}

void CodeIndent::IndentLine(int line) {
  const std::optional<int> columns = ColumnsOf(line);
  if (columns && editor.Indentation(line) != *columns) editor.SetIndentation(line, *columns);
}

void CodeIndent::Indent(int line) {
  const std::optional<int> columns = ColumnsToType(line);
  if (!columns) return;
  if (editor.Indentation(line) != *columns) editor.SetIndentation(line, *columns);
  ownLine = line;
  ownColumns = *columns;
}

// Blanks that nothing was typed after go.
void CodeIndent::OnNewLine(int line) {
  const std::string left = editor.GetRange(editor.LineStart(line - 1), editor.LineEnd(line - 1));
  if (IsOwn(line - 1) && Trimmed(left).empty())
    editor.SetIndentation(line - 1, 0);
  else if (IsOwn(line - 1))
    Indent(line - 1);
  Indent(line);
}

void CodeIndent::Typed(char typed) {
  const int caret = editor.CaretPosition();
  const int line = editor.LineOf(caret);
  const char lineEnd = editor.Send(mavro::SCI_GETEOLMODE) == mavro::SC_EOL_CR ? '\r' : '\n';
  if (typed == lineEnd && line > 0) {
    const mavro::UndoStep step(editor);
    return OnNewLine(line);
  }
  constexpr std::string_view cMovers = "<>&|?:.,=+-*/{}()[]# ";
  if (cMovers.find(typed) == cMovers.npos) return;
  const std::string all = editor.GetRange(editor.LineStart(line), caret);
  const size_t first = all.find_first_not_of(cBlanks);
  const std::string before = first == all.npos ? std::string() : all.substr(first);
  constexpr std::string_view cAlone = "{}#)]";
  const bool isAlone = before.size() == 1 && cAlone.find(typed) != cAlone.npos;
  if (before.empty() || !(isAlone || (IsOwn(line) && MovesLine(before, typed)))) return;
  Indent(line);
}

std::string CodeIndent::Moved(std::string_view pasted) const {
  const std::vector<std::string_view> lines = LinesOf(pasted);
  const int start = editor.Selection().first;
  const int line = editor.LineOf(start);
  const std::string before = editor.GetRange(editor.LineStart(line), start);
  if (lines.size() < 2 || !Trimmed(before).empty()) return std::string(pasted);
  const std::optional<int> place = ColumnsOf(line, Trimmed(lines.front()));
  if (!place) return std::string(pasted);
  const IndentHabits habits = Habits();
  const int from = ColumnsBefore(before, habits.tabWidth);
  const int shift = std::max(*place, from) - IndentOfFirst(lines, habits.tabWidth);
  std::string moved;
  for (size_t i = 0; i < lines.size(); ++i) {
    const std::string_view words =
        lines[i].substr(std::min(lines[i].find_first_not_of(cBlanks), lines[i].size()));
    const bool isBlank = Trimmed(words).empty();
    const int own =
        i == 0 ? IndentOfFirst(lines, habits.tabWidth) : ColumnsBefore(lines[i], habits.tabWidth);
    const bool stays = isBlank || (own == 0 && words.front() == '#');
    if (!stays) moved += BlanksOf(i == 0 ? from : 0, std::max(0, own + shift), habits);
    moved += words;
  }
  return moved;
}

}  // namespace zendry
