#include "code/TidyEdits.h"

#include <algorithm>

#include "base/ParseInt.h"

namespace zendry {

namespace {

constexpr std::string_view cBlanks = " \t";

// Reads the list from its start; each step takes what it finds, or fails.
class ListReader {
 public:
  explicit ListReader(std::string_view theList) : list(theList) {}

  bool Take(std::string_view words) {
    if (!list.starts_with(words)) return false;
    list.remove_prefix(words.size());
    return true;
  }
  std::optional<size_t> Number() { return TakeNumber<size_t>(list); }
  // Up to the next tag, with its characters decoded.
  std::optional<std::string> Text() {
    std::string text;
    while (!list.empty() && list.front() != '<') {
      if (list.front() != '&') {
        text += list.front();
        list.remove_prefix(1);
      } else if (!TakeCharacter(text)) {
        return std::nullopt;
      }
    }
    return text;
  }
  void SkipLineEnds() { list.remove_prefix(std::min(list.find_first_not_of("\r\n"), list.size())); }
  bool IsAtEnd() const { return list.empty(); }

 private:
  bool TakeCharacter(std::string& text) {
    struct Row {
      std::string_view name;
      char character;
    };
    constexpr Row cRows[] = {{"&#10;", '\n'}, {"&#13;", '\r'},  {"&lt;", '<'},   {"&gt;", '>'},
                             {"&amp;", '&'},  {"&apos;", '\''}, {"&quot;", '"'}, {"&#9;", '\t'}};
    for (const Row& row : cRows)
      if (Take(row.name)) return text += row.character, true;
    return false;
  }

  std::string_view list;
};

// An edit's end, and the offset of the one that may come next.
bool IsInPlace(const TextEdit& edit, size_t from, size_t size) {
  return edit.offset >= from && edit.offset <= size && edit.length <= size - edit.offset;
}

std::string_view Word(bool is) {
  return is ? "true" : "false";
}

// Directives between `#if` and `#endif`, by the place of their blanks.
struct DirectiveCount {
  size_t plain = 0, after = 0, before = 0;
  size_t leastAfter = 0, leastBefore = 0;  // blanks; 0 if there are none

  void Add(size_t blanksBefore, size_t blanksAfter) {
    const auto take = [](size_t& count, size_t& least, size_t blanks) {
      ++count;
      least = least == 0 ? blanks : std::min(least, blanks);
    };
    if (blanksAfter > 0)
      take(after, leastAfter, blanksAfter);
    else if (blanksBefore > 0)
      take(before, leastBefore, blanksBefore);
    else
      ++plain;
  }
};

struct Directive {
  size_t blanksBefore, blanksAfter;  // the `#`
  std::string_view words;

  bool Opens() const { return words.starts_with("if"); }
  bool Branches() const { return words.starts_with("el"); }
  bool Closes() const { return words.starts_with("endif"); }
};

std::vector<Directive> DirectivesOf(std::string_view text) {
  std::vector<Directive> directives;
  for (size_t at = 0; at < text.size();) {
    const size_t end = std::min(text.find('\n', at), text.size());
    const std::string_view line = text.substr(at, end - at);
    at = end + 1;
    const size_t hash = std::min(line.find_first_not_of(cBlanks), line.size());
    if (!line.substr(hash).starts_with('#')) continue;
    const size_t words = std::min(line.find_first_not_of(' ', hash + 1), line.size());
    directives.push_back({hash, words - hash - 1, line.substr(words)});
  }
  return directives;
}

// True for the guard of a header, in which clang-format doesn't indent: "#ifndef X", "#define X".
bool BeginsWithGuard(const std::vector<Directive>& directives) {
  constexpr std::string_view cIf = "ifndef ", cDefine = "define ";
  if (directives.size() < 2) return false;
  const std::string_view first = directives[0].words, second = directives[1].words;
  return first.starts_with(cIf) && second.starts_with(cDefine) &&
         second.substr(cDefine.size()).starts_with(first.substr(cIf.size()));
}

DirectiveCount CountDirectives(std::string_view text) {
  const std::vector<Directive> directives = DirectivesOf(text);
  const size_t outside = BeginsWithGuard(directives) ? 1 : 0;
  DirectiveCount count;
  size_t depth = 0;
  for (const Directive& directive : directives) {
    const bool leaves = directive.Closes() || directive.Branches();
    if (leaves && depth > 0) --depth;
    if (depth > outside) count.Add(directive.blanksBefore, directive.blanksAfter);
    if (directive.Opens() || directive.Branches()) ++depth;
  }
  return count;
}

// Where reading may begin for a line: after the last function that ends at the margin.
size_t WindowOf(std::string_view done) {
  constexpr size_t cMostRead = 16 * 1024;
  const size_t end = done.rfind("\n}");
  const size_t least = done.size() > cMostRead ? done.size() - cMostRead : 0;
  const size_t line = least == 0 ? 0 : std::min(done.find('\n', least), done.size() - 1) + 1;
  return end == done.npos ? line : std::max(line, end + 1);
}

}  // namespace

std::optional<std::vector<TextEdit>> ReadReplacements(std::string_view list, size_t size) {
  ListReader reader(list);
  if (!reader.Take("<?xml version='1.0'?>")) return std::nullopt;
  reader.SkipLineEnds();
  if (!reader.Take("<replacements xml:space='preserve' incomplete_format='false'>"))
    return std::nullopt;
  std::vector<TextEdit> edits;
  size_t from = 0;
  for (reader.SkipLineEnds(); reader.Take("<replacement offset='"); reader.SkipLineEnds()) {
    const std::optional<size_t> offset = reader.Number();
    if (!offset || !reader.Take("' length='")) return std::nullopt;
    const std::optional<size_t> length = reader.Number();
    if (!length || !reader.Take("'>")) return std::nullopt;
    std::optional<std::string> text = reader.Text();
    if (!text || !reader.Take("</replacement>")) return std::nullopt;
    edits.push_back({*offset, *length, std::move(*text)});
    if (!IsInPlace(edits.back(), from, size)) return std::nullopt;
    from = *offset + *length;
  }
  if (!reader.Take("</replacements>")) return std::nullopt;
  reader.SkipLineEnds();
  if (!reader.IsAtEnd()) return std::nullopt;
  return edits;
}

std::vector<TextEdit> Narrowed(const std::vector<TextEdit>& edits, std::string_view text) {
  std::vector<TextEdit> narrowed;
  for (const TextEdit& edit : edits) {
    const std::string_view old = text.substr(edit.offset, edit.length);
    const size_t shorter = std::min(old.size(), edit.text.size());
    size_t before = 0, after = 0;
    while (before < shorter && old[before] == edit.text[before]) ++before;
    while (after < shorter - before &&
           old[old.size() - 1 - after] == edit.text[edit.text.size() - 1 - after])
      ++after;
    if (before == old.size() && before == edit.text.size()) continue;
    narrowed.push_back({edit.offset + before, old.size() - before - after,
                        edit.text.substr(before, edit.text.size() - before - after)});
  }
  return narrowed;
}

std::vector<TextEdit> IndentEdits(std::string_view text, const IndentHabits& habits, int first,
                                  int last) {
  std::vector<TextEdit> edits;
  std::string done;
  size_t at = 0;
  for (int line = 0; at < text.size() && line <= last; ++line) {
    const size_t end = std::min(text.find('\n', at), text.size() - 1) + 1;
    const std::string_view whole = text.substr(at, end - at);
    const size_t words = std::min(whole.find_first_not_of(cBlanks), whole.size());
    const std::string_view rest = whole.substr(words);
    const bool isBlank = rest.find_first_not_of("\r\n") == rest.npos;
    std::optional<int> columns;
    if (line >= first && !isBlank) {
      const size_t window = WindowOf(done);
      const std::string_view shown = rest.substr(0, rest.find_last_not_of("\r\n") + 1);
      columns = IndentOfLastLine(done.substr(window).append(shown), habits);
    }
    if (columns) {
      const std::string blanks = BlanksOf(0, *columns, habits);
      if (blanks != whole.substr(0, words)) edits.push_back({at, words, blanks});
      done.append(blanks).append(rest);
    } else {
      done += whole;
    }
    at = end;
  }
  return edits;
}

std::string DirectiveStyle(std::string_view text) {
  const DirectiveCount count = CountDirectives(text);
  const bool isAfter = count.after > count.before + count.plain;
  const bool isBefore = count.before > count.after + count.plain;
  if (!isAfter && !isBefore) return "IndentPPDirectives: None";
  return std::string("IndentPPDirectives: ") + (isAfter ? "AfterHash" : "BeforeHash") +
         ", PPIndentWidth: " + std::to_string(isAfter ? count.leastAfter : count.leastBefore);
}

std::string StyleOf(const IndentHabits& habits, std::string_view text) {
  constexpr const char* cBraces[] = {"Attach", "Linux", "Allman", "GNU"};
  const auto number = [](int value) { return std::to_string(value); };
  std::string style =
      "{BasedOnStyle: LLVM, ColumnLimit: 0, SortIncludes: Never, ReflowComments: "
      "false, SortUsingDeclarations: false, FixNamespaceComments: false, "
      "MaxEmptyLinesToKeep: 99, AlignTrailingComments: false, ";
  style += "IndentWidth: " + number(habits.unit) + ", TabWidth: " + number(habits.tabWidth);
  style += std::string(", UseTab: ") + (habits.useTabs ? "Always" : "Never");
  style += std::string(", BreakBeforeBraces: ") + cBraces[static_cast<size_t>(habits.braces)];
  style += ", ContinuationIndentWidth: " + number(habits.Of(IndentHabit::cContinuation));
  style += ", AccessModifierOffset: " + number(habits.Of(IndentHabit::cAccess) - habits.unit);
  style.append(", IndentCaseLabels: ").append(Word(habits.Of(IndentHabit::cCase) > 0));
  style += std::string(", NamespaceIndentation: ") +
           (habits.Of(IndentHabit::cNamespace) > 0 ? "All" : "None");
  style += std::string(", AlignAfterOpenBracket: ") + (habits.aligns ? "Align" : "DontAlign");
  style += ", DerivePointerAlignment: true, " + DirectiveStyle(text);
  return style + "}";
}

}  // namespace zendry
