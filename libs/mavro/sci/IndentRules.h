#pragma once

#include <vector>

#include "EditorLanguage.h"
#include "EditorOptions.h"
#include "SciText.h"

namespace mavro {

// What decides about the indentation of a text.
struct IndentContext {
  const SciText& text;
  const EditorOptions& options;
  const EditorLanguage& language;
  int indentSize = 3;
  char lineEnd = '\n';  // the character that a new line ends with
};

// What a line does to the indentation of those behind it.
enum class IndentClass { cPlain = 0, cBlockStart = 1, cBlockEnd = 2, cStatement = 3 };

// A line is to be indented by so many columns.
struct IndentChange {
  int line = 0;
  int columns = 0;
  friend bool operator==(const IndentChange&, const IndentChange&) = default;
};

IndentClass ClassifyLine(const IndentContext& context, int line);

// The indentation of what follows a line.
int ExpectedIndent(const IndentContext& context, int line);

// The first line whose words and blocks ExpectedIndent may look at.
int FirstLineLookedAt(const IndentContext& context, int line);

// What a character typed before `caret` changes, in order: by the blocks of the language, or the
// indentation of the line above kept.
std::vector<IndentChange> AutoIndentChanges(const IndentContext& context, int caret, char typed);
std::vector<IndentChange> MaintainIndentChanges(const IndentContext& context, int caret,
                                                char typed);

}  // namespace mavro
