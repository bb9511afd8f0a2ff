#include "IndentRules.h"

#include <algorithm>
#include <string>

#include "CharSets.h"

namespace mavro {

namespace {

constexpr size_t cMostWords = 20;

// The runs of a line's bytes that have a style, at most twenty.
std::vector<std::string> WordsInStyle(const SciText& text, int line, int style) {
  std::vector<std::string> words;
  const int start = text.LineStart(line);
  const std::string bytes = text.Range(start, text.LineEnd(line));
  bool inWord = false;
  for (size_t i = 0; i < bytes.size(); ++i) {
    const bool styled =
        text.StyleAt(start + static_cast<int>(i)) == style && bytes[i] != ' ' && bytes[i] != '\t';
    if (styled && !inWord) {
      if (words.size() == cMostWords) break;
      words.emplace_back();
    }
    if (styled) words.back() += bytes[i];
    inWord = styled;
  }
  return words;
}

// Adjacent operators are one run; each of them counts if single characters are looked for.
IndentClass ClassOfOperators(const std::string& run, const EditorLanguage& language) {
  IndentClass found = IndentClass::cPlain;
  const auto look = [&](std::string_view word) {
    if (Includes(language.blockEnd, word)) found = IndentClass::cBlockEnd;
    if (Includes(language.blockStart, word)) found = IndentClass::cBlockStart;
  };
  look(run);
  if (run.size() > 1)
    for (const char& c : run) look({&c, 1});
  return found;
}

bool IsSingle(const char* set, char character) {
  return set && set[0] == character && character != '\0' && set[1] == '\0';
}

bool IsLonger(const char* set) {
  return set && set[0] != '\0' && set[1] != '\0';
}

bool OnlyBlankBefore(const SciText& text, int position) {
  return IsBlank(text.Range(text.LineStart(text.LineOf(position)), position));
}

std::string LineOf(const SciText& text, int line) {
  return text.Range(text.LineStart(line), text.LineEnd(line));
}

int Closed(const IndentContext& context, int columns) {
  return std::max(0, columns - context.indentSize);
}

std::vector<IndentChange> OnNewLine(const IndentContext& context, int caret, int line) {
  const SciText& text = context.text;
  const std::string before = text.Range(text.LineStart(line), caret);
  const std::string behind = text.Range(caret, std::min(caret + 1, text.LineEnd(line)));
  if (!IsBlank(before) || behind == " " || behind == "\t") return {};
  std::vector<IndentChange> changes;
  int expected = ExpectedIndent(context, line - 1);
  const bool rebase = !context.options.indentClosing && IsLonger(context.language.blockEnd) &&
                      line > 1 && ClassifyLine(context, line - 1) == IndentClass::cBlockEnd;
  if (rebase) {
    expected = Closed(context, ExpectedIndent(context, line - 2));
    changes.push_back({line - 1, expected});
  }
  changes.push_back({line, expected});
  return changes;
}

}  // namespace

IndentClass ClassifyLine(const IndentContext& context, int line) {
  const EditorLanguage& language = context.language;
  IndentClass found = IndentClass::cPlain;
  for (const std::string& word : WordsInStyle(context.text, line, context.options.keywordStyle))
    if (Includes(language.indentWords, word)) found = IndentClass::cStatement;
  for (const std::string& run : WordsInStyle(context.text, line, context.options.operatorStyle))
    if (const IndentClass one = ClassOfOperators(run, language); one != IndentClass::cPlain)
      found = one;
  return found;
}

int FirstLineLookedAt(const IndentContext& context, int line) {
  return std::max(0, line - context.options.statementLookback);
}

int ExpectedIndent(const IndentContext& context, int line) {
  if (line < 0) return 0;
  const int last = FirstLineLookedAt(context, line);
  for (int at = line; at >= last; --at) {
    const IndentClass found = ClassifyLine(context, at);
    if (found == IndentClass::cPlain) continue;
    const int base = context.text.Indentation(at);
    if (found == IndentClass::cBlockStart)
      return context.options.indentOpening ? base : base + context.indentSize;
    if (found == IndentClass::cBlockEnd)
      return context.options.indentClosing ? Closed(context, base) : base;
    return at == line ? base + context.indentSize : base;
  }
  return context.text.Indentation(line);
}

std::vector<IndentChange> AutoIndentChanges(const IndentContext& context, int caret, char typed) {
  const EditorLanguage& language = context.language;
  const EditorOptions& options = context.options;
  const SciText& text = context.text;
  const int line = text.LineOf(caret);
  if (IsSingle(language.blockEnd, typed)) {
    if (options.indentClosing || !OnlyBlankBefore(text, caret - 1)) return {};
    return {{line, Closed(context, ExpectedIndent(context, line - 1))}};
  }
  if (IsLonger(language.blockEnd) && typed == ' ') {
    if (options.indentClosing || ClassifyLine(context, line) != IndentClass::cBlockEnd) return {};
    return {{line, Closed(context, ExpectedIndent(context, line - 1))}};
  }
  if (IsSingle(language.blockStart, typed)) {
    const bool opens = !options.indentOpening && line > 0 && OnlyBlankBefore(text, caret - 1) &&
                       ClassifyLine(context, line - 1) == IndentClass::cStatement;
    if (!opens) return {};
    return {{line, Closed(context, ExpectedIndent(context, line - 1))}};
  }
  if (typed != context.lineEnd || line == 0) return {};
  return OnNewLine(context, caret, line);
}

std::vector<IndentChange> MaintainIndentChanges(const IndentContext& context, int caret,
                                                char typed) {
  const int line = context.text.LineOf(caret);
  if (typed != context.lineEnd || line == 0) return {};
  int above = line - 1;
  const int last = FirstLineLookedAt(context, above);
  while (above > last && IsBlank(LineOf(context.text, above))) --above;
  const int columns = context.text.Indentation(above);
  if (columns <= 0) return {};
  return {{line, columns}};
}

}  // namespace mavro
