#include "code/DeclScan.h"

#include <algorithm>
#include <array>

#include "code/TextScanner.h"

namespace zendry {

namespace {

// The most bytes that one search from a place reads. No type is farther from its name.
constexpr int cMostReads = TextScanner::cWindow;

// Words before a type that don't affect its members.
constexpr std::array<std::string_view, 19> cPassedOver = {
    "class",  "const",    "constexpr", "enum",      "explicit", "extern",   "friend",
    "inline", "mutable",  "private",   "protected", "public",   "register", "static",
    "struct", "typename", "union",     "virtual",   "volatile"};

// Words before a name that isn't a declaration.
constexpr std::array<std::string_view, 19> cNoTypes = {
    "and",    "case",   "co_await",  "co_return", "co_yield", "delete",   "do",
    "else",   "goto",   "namespace", "new",       "not",      "operator", "or",
    "return", "sizeof", "throw",     "typedef",   "using"};

template <size_t Size>
bool Contains(const std::array<std::string_view, Size>& words, std::string_view word) {
  return std::find(words.begin(), words.end(), word) != words.end();
}

bool IsOperator(int c) {
  return c == '.' || c == '-' || c == '>' || c == ':';
}

bool IsReference(int c) {
  return c == '*' || c == '&';
}

// A text that grows to the left in a buffer of fixed size, since its characters are read backward.
class BackwardText {
 public:
  // False when the buffer is full.
  bool Put(int c) {
    if (begin == 0) return false;
    cells[--begin] = static_cast<char>(c);
    return true;
  }
  // A run of blanks becomes one.
  bool PutBlank() { return Front() == ' ' || Put(' '); }
  void Clear() { begin = cCapacity; }
  char Front() const { return begin == cCapacity ? '\0' : cells[begin]; }
  std::string_view View() const { return {cells + begin, static_cast<size_t>(cCapacity - begin)}; }

 private:
  static constexpr int cCapacity = 512;

  char cells[cCapacity];
  int begin = cCapacity;
};

// Takes the first run of word characters off a text, together with the text before it.
std::string_view TakeWord(std::string_view& text) {
  const auto isWord = [](char c) { return IsWordChar(static_cast<unsigned char>(c)); };
  const auto begin = std::find_if(text.begin(), text.end(), isWord);
  const auto end = std::find_if_not(begin, text.end(), isWord);
  const std::string_view word(begin, end);
  text = std::string_view(end, text.end());
  return word;
}

// Reads back to the opening bracket of the group whose closing one has been read. False when there
// is none near by.
bool SkipGroup(TextScanner& scanner, int open, int close) {
  int depth = 1;
  for (int reads = 0; reads < cMostReads && depth > 0; ++reads) {
    const int c = scanner.readBack();
    if (c == 0) return false;
    if (c == close) ++depth;
    if (c == open) --depth;
  }
  return depth == 0;
}

// Reads on over white space, starting with a byte that has been read.
int SkipSpaceBack(TextScanner& scanner, int c) {
  for (int reads = 0; reads < cMostReads && IsWhiteSpace(c); ++reads) c = scanner.readBack();
  return c;
}

// The ways in which a chain can continue at a byte that isn't a word character.
enum class Link { cMember, cIndex, cSpace, cNone };

Link ReadLink(TextScanner& scanner, int c) {
  const bool spaced = IsWhiteSpace(c);
  c = SkipSpaceBack(scanner, c);
  if (c == '.') return Link::cMember;
  if (c == '>' && scanner.At(scanner.position - 1) == '-') {
    scanner.readBack();
    return Link::cMember;
  }
  if (c == ']') return SkipGroup(scanner, '[', ']') ? Link::cIndex : Link::cNone;
  if (!spaced || !IsWordChar(c)) return Link::cNone;
  ++scanner.position;  // a word before white space; the caller reads it
  return Link::cSpace;
}

// The end of the word before the group that ends at `place`. Nothing without such a word: the
// parentheses then don't hold a list of arguments.
std::optional<int> WordBeforeGroup(TextScanner& scanner, int place) {
  const bool isIndex = scanner.At(place) == ']';
  scanner.position = place;
  if (!SkipGroup(scanner, isIndex ? '[' : '(', isIndex ? ']' : ')')) return std::nullopt;
  int before = scanner.position - 1;
  while (before > 0 && IsWhiteSpace(scanner.At(before))) --before;
  if (!isIndex && !IsWordChar(scanner.At(before))) return std::nullopt;
  return before;
}

}  // namespace

bool IsPassedOver(std::string_view word) {
  return Contains(cPassedOver, word);
}

bool CanNameType(std::string_view word) {
  return !Contains(cNoTypes, word) && !IsPassedOver(word);
}

int operandEnd(TextScanner& scanner, int place) {
  int end = place;
  while (end > 0 && (IsWhiteSpace(scanner.At(end)) || IsOperator(scanner.At(end)))) --end;
  while (scanner.At(end) == ']' || scanner.At(end) == ')') {
    const std::optional<int> before = WordBeforeGroup(scanner, end);
    if (!before) return place;
    end = *before;
  }
  return std::max(end, 0);
}

Chain readChain(TextScanner& scanner, int start) {
  Chain chain{{}, start, std::max(start, 0)};
  while (IsWordChar(scanner.At(chain.wordEnd))) ++chain.wordEnd;
  scanner.position = chain.wordEnd;
  BackwardText text;
  for (;;) {
    const int c = scanner.readBack();
    const int place = scanner.position;
    if (IsWordChar(c)) {
      if (!text.Put(c)) return {{}, start, chain.wordEnd};
      chain.start = place;
      continue;
    }
    const Link link = c == 0 ? Link::cNone : ReadLink(scanner, c);
    // White space is part of a chain only if a member operator follows it.
    if (link == Link::cNone || (link == Link::cSpace && text.Front() != '.')) break;
    if (link == Link::cMember && !text.Put('.')) return {{}, start, chain.wordEnd};
  }
  chain.text = text.View();
  if (chain.text.ends_with('.')) chain.text.pop_back();
  return chain;
}

namespace {

// Finds the type before a name: reads backward to the end of the statement before and takes the
// words in between.
class DeclReader {
 public:
  DeclReader(TextScanner& theScanner, ScanBudget& theBudget)
      : scanner(theScanner), budget(theBudget) {}

  std::string Read() {
    const int most = std::min(cMostReads, budget.reads);
    State state = State::cMore;
    while (state == State::cMore && readsDone < most) state = Step(ReadBack());
    budget.reads -= readsDone;
    return state == State::cComplete ? TypeName() : std::string();
  }

 private:
  enum class State { cMore, cComplete, cNone };

  int ReadBack() {
    ++readsDone;
    return scanner.readBack();
  }

  static State More(bool ok) { return ok ? State::cMore : State::cNone; }

  State Step(int c) {
    constexpr std::string_view cEnds = ";}{(:";
    if (IsWhiteSpace(c)) return More(words.PutBlank());
    if (c == '&' && IsLogicalAnd()) return State::cNone;
    if (IsWordChar(c) || IsReference(c)) return More(words.Put(c));
    if (c == '>') return More(SkipTemplateArguments() && words.PutBlank());
    if (c == 0 || cEnds.find(static_cast<char>(c)) != cEnds.npos) return State::cComplete;
    if (c == ',') return Comma();
    return More(inList && words.PutBlank());
  }

  // The comma ends the declaration before it, of another parameter. If nothing is between the comma
  // and the name, the type is before an earlier name.
  State Comma() {
    std::string_view text = words.View();
    if (!inList && !TakeWord(text).empty()) return State::cComplete;
    inList = true;
    words.Clear();
    words.Put(',');
    return State::cMore;
  }

  // True for "a && b"; "Foo&& b" and "Foo &&b" are declarations.
  bool IsLogicalAnd() {
    const int place = scanner.position;
    return scanner.At(place - 1) == '&' && IsWhiteSpace(scanner.At(place - 2)) &&
           IsWhiteSpace(scanner.At(place + 1));
  }

  bool SkipTemplateArguments() {
    while (readsDone < cMostReads) {
      const int c = ReadBack();
      if (c == '<') return true;
      if (!IsWordChar(c) && !IsWhiteSpace(c) && c != ',') return false;
    }
    return false;
  }

  std::string TypeName() const {
    std::string_view text = words.View();
    std::string_view word = TakeWord(text);
    while (Contains(cPassedOver, word)) word = TakeWord(text);
    const bool isNumber = !word.empty() && word.front() >= '0' && word.front() <= '9';
    if (isNumber || Contains(cNoTypes, word)) return {};
    // In a list the first name must follow its type: "f(a, b)" declares nothing.
    if (inList && TakeWord(text).empty()) return {};
    return std::string(word);
  }

  TextScanner& scanner;
  ScanBudget& budget;
  BackwardText words;
  bool inList = false;  // a comma has been passed
  int readsDone = 0;
};

// True if a member operator follows the word that ends here; such a word is used, not declared.
bool IsFollowedByMember(TextScanner& scanner, int wordEnd) {
  int place = wordEnd;
  while (place - wordEnd < cMostReads && IsWhiteSpace(scanner.At(place))) ++place;
  return scanner.At(place) == '.' || (scanner.At(place) == '-' && scanner.At(place + 1) == '>');
}

// The declaration of the name that begins at the scanner's position. Without one the scanner stays
// there.
std::optional<TextDecl> DeclarationBefore(TextScanner& scanner, ScanBudget& budget) {
  const int nameStart = scanner.position;
  const int c = scanner.readBack();
  if (!IsWhiteSpace(c) && !IsReference(c)) return std::nullopt;
  const int place = scanner.position;
  std::string type = findDeclType(scanner, place, budget);
  scanner.position = place;
  if (type.empty()) return std::nullopt;
  return TextDecl{std::move(type), nameStart};
}

}  // namespace

std::string findDeclType(TextScanner& scanner, int position, ScanBudget& budget) {
  scanner.position = position;
  return DeclReader(scanner, budget).Read();
}

std::optional<TextDecl> findTextDecl(TextScanner& scanner, std::string_view name, int from,
                                     int lowerBound) {
  if (name.empty()) return std::nullopt;
  ScanBudget budget;
  scanner.position = from;
  size_t open = name.size();  // number of letters of the name still to be matched
  int wordEnd = 0;
  while (scanner.position > lowerBound && budget.reads > 0) {
    const int c = scanner.readBack();
    --budget.reads;
    if (c != static_cast<unsigned char>(name[open - 1])) {
      open = name.size();
      continue;
    }
    if (open == name.size()) wordEnd = scanner.position + 1;
    if (--open > 0) continue;
    open = name.size();
    // A longer word, or a use of the name, declares nothing.
    if (IsWordChar(scanner.At(wordEnd)) || IsFollowedByMember(scanner, wordEnd)) continue;
    if (std::optional<TextDecl> decl = DeclarationBefore(scanner, budget)) return decl;
  }
  return std::nullopt;
}

std::optional<TextDecl> declarationAt(TextScanner& scanner, int wordEnd) {
  if (IsFollowedByMember(scanner, wordEnd)) return std::nullopt;
  scanner.position = wordEnd;
  while (IsWordChar(scanner.At(scanner.position - 1))) --scanner.position;
  ScanBudget budget;
  return DeclarationBefore(scanner, budget);
}

}  // namespace zendry
