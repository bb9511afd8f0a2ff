#include "LineCommands.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "CharSets.h"
#include "SciEditor.h"
#include "UndoStep.h"

namespace mavro {

namespace {

constexpr const char* cBlanks = " \t";

struct LineRange {
  int first = 0;
  int last = 0;
};

LineRange SelectedLines(const SciEditor& editor) {
  const auto [start, end] = editor.Selection();
  LineRange range{editor.LineOf(start), editor.LineOf(end)};
  if (range.last > range.first && end == editor.LineStart(range.last)) --range.last;
  return range;
}

std::string TextOf(const SciEditor& editor, int line) {
  return editor.GetRange(editor.LineStart(line), editor.LineEnd(line));
}

void Replace(SciEditor& editor, int start, int end, std::string_view text) {
  editor.Send(SCI_SETTARGETRANGE, static_cast<std::uintptr_t>(start), end);
  editor.Send(SCI_REPLACETARGET, text.size(), text.data());
}

// The place of the first letter of a line's text.
size_t LetterIn(std::string_view text) {
  return std::min(text.find_first_not_of(cBlanks), text.size());
}

void Uncomment(SciEditor& editor, int line, std::string_view sign) {
  const std::string text = TextOf(editor, line);
  if (IsBlank(text)) return;
  const size_t letter = LetterIn(text);
  const size_t length = sign.size() + (text.substr(letter + sign.size(), 1) == " ");
  const int start = editor.LineStart(line) + static_cast<int>(letter);
  Replace(editor, start, start + static_cast<int>(length), "");
}

}  // namespace

void ToggleLineComment(SciEditor& editor) {
  if (!editor.language || !editor.language->lineComment) return;
  const std::string sign = editor.language->lineComment;
  const LineRange lines = SelectedLines(editor);
  size_t column = std::string::npos;
  bool allHaveIt = true;
  for (int line = lines.first; line <= lines.last; ++line) {
    const std::string text = TextOf(editor, line);
    if (IsBlank(text)) continue;
    column = std::min(column, LetterIn(text));
    allHaveIt = allHaveIt && text.compare(LetterIn(text), sign.size(), sign) == 0;
  }
  if (column == std::string::npos) return;
  const UndoStep step(editor);
  for (int line = lines.first; line <= lines.last; ++line) {
    const int start = editor.LineStart(line) + static_cast<int>(column);
    if (allHaveIt)
      Uncomment(editor, line, sign);
    else if (!IsBlank(TextOf(editor, line)))
      Replace(editor, start, start, sign + " ");
  }
}

void JoinLines(SciEditor& editor) {
  const LineRange lines = SelectedLines(editor);
  const int joints = std::max(lines.last - lines.first, 1);
  if (lines.first + joints >= editor.LineCount()) return;
  const UndoStep step(editor);
  for (int i = 0; i < joints; ++i) {
    const std::string left = TextOf(editor, lines.first), right = TextOf(editor, lines.first + 1);
    const size_t kept = left.find_last_not_of(cBlanks) + 1;  // 0 if there is nothing but blanks
    const size_t letter = LetterIn(right);
    const int start = editor.LineStart(lines.first);
    const bool parted = kept > 0 && letter < right.size();
    Replace(editor, kept > 0 ? start + static_cast<int>(kept) : editor.LineEnd(lines.first),
            editor.LineStart(lines.first + 1) + static_cast<int>(letter), parted ? " " : "");
  }
}

void SortLines(SciEditor& editor) {
  const LineRange lines = SelectedLines(editor);
  std::vector<std::string> texts;
  for (int line = lines.first; line <= lines.last; ++line) texts.push_back(TextOf(editor, line));
  if (std::is_sorted(texts.begin(), texts.end())) return;
  std::stable_sort(texts.begin(), texts.end());
  const UndoStep step(editor);
  for (int line = lines.first; line <= lines.last; ++line) {
    const std::string& text = texts[static_cast<size_t>(line - lines.first)];
    Replace(editor, editor.LineStart(line), editor.LineEnd(line), text);
  }
  editor.Select(editor.LineStart(lines.first), editor.LineEnd(lines.last));
}

}  // namespace mavro
