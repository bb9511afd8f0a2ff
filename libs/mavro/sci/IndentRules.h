#pragma once

#include <vector>

#include "EditorLanguage.h"
#include "EditorOptions.h"
#include "SciText.h"

namespace mavro {

// The facts that decide the indentation of a text.
struct IndentContext {
  const SciText& text;
  const EditorOptions& options;
  const EditorLanguage& language;
  int indentSize = 3;
  char lineEnd = '\n';  // the character that a new line ends with
};

// The effect of a line on the indentation of the lines after it.
enum class IndentClass { cPlain = 0, cBlockStart = 1, cBlockEnd = 2, cStatement = 3 };

// A line and the columns to indent it by.
struct IndentChange {
  int line = 0;
  int columns = 0;
  friend bool operator==(const IndentChange&, const IndentChange&) = default;
};

IndentClass ClassifyLine(const IndentContext& context, int line);

// The indentation of the text that follows a line.
int ExpectedIndent(const IndentContext& context, int line);

// The first line whose words and blocks ExpectedIndent may look at.
int FirstLineLookedAt(const IndentContext& context, int line);

// The changes that a character typed before `caret` leads to, in order. They follow the blocks of
// the language, or keep the indentation of the line above.
std::vector<IndentChange> AutoIndentChanges(const IndentContext& context, int caret, char typed);
std::vector<IndentChange> MaintainIndentChanges(const IndentContext& context, int caret,
                                                char typed);

}  // namespace mavro
