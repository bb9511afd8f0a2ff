#include "code/SourceShape.h"

#include <algorithm>

namespace zendry {

namespace {

constexpr std::string_view cRecordWords = "class struct union enum";
constexpr std::string_view cAccessWords = "public protected private signals slots";
constexpr int cLinesToLook = 2;  // after the line of a tag

bool IsBlank(char c) {
  return c == ' ' || c == '\t';
}

}  // namespace

SourceShape::SourceShape(std::string theText) : text(std::move(theText)), tokens(text) {}

int SourceShape::NameIn(int line, std::string_view name) const {
  const CodeTokens wanted{std::string(name)};
  if (wanted.Count() == 0) return -1;
  size_t start = 0;
  for (int i = 1; i < line && start < text.size(); ++i) start = text.find('\n', start) + 1;
  size_t end = start;
  for (int i = 0; i <= cLinesToLook && end < text.size(); ++i) {
    end = text.find('\n', end);
    end = end == text.npos ? text.size() : end + 1;
  }
  const auto isIt = [&](int at) {
    for (int i = 0; i < wanted.Count(); ++i)
      if (tokens.Text(at + i) != wanted.Text(i)) return false;
    // "~A" is no place of "A".
    return !tokens.Is(at - 1, "~");
  };
  // The first token of the line, by halves.
  int low = 0, high = tokens.Count();
  while (low < high) {
    const int middle = (low + high) / 2;
    if (static_cast<size_t>(tokens.Start(middle)) < start)
      low = middle + 1;
    else
      high = middle;
  }
  int found = -1;
  for (; low < tokens.Count() && static_cast<size_t>(tokens.Start(low)) < end; ++low) {
    if (!isIt(low)) continue;
    // Of "A::A(" the last one is declared.
    if (found < 0 || tokens.Is(low - 1, "::")) found = low;
    if (!tokens.Is(low + wanted.Count(), "::")) break;
  }
  return found;
}

int SourceShape::BodyOf(int name) const {
  bool isRecord = false;
  for (int at = name - 1; at >= 0 && !tokens.IsOneOf(at, "; { }"); --at)
    isRecord = isRecord || tokens.IsOneOf(at, cRecordWords);
  if (!isRecord) return -1;
  for (int at = name; at < tokens.Count() && !tokens.Is(at, ";"); ++at) {
    if (tokens.Is(at, "{")) return at;
    if (tokens.Is(at, "(") && tokens.IsOpening(at)) at = tokens.Partner(at);
  }
  return -1;
}

int SourceShape::BlockAround(int token) const {
  for (int at = token - 1; at >= 0; --at) {
    if (tokens.IsClosing(at))
      at = tokens.Partner(at);
    else if (tokens.Is(at, "{"))
      return at;
  }
  return -1;
}

int SourceShape::BlockEnd(int block) const {
  return block >= 0 && tokens.IsOpening(block) ? tokens.Partner(block) : tokens.Count();
}

SourceShape::Statement SourceShape::Next(int begin, int end, bool& isWhole) const {
  bool isRecord = false, hasGroup = false, hasValue = false, hasColon = false;
  for (int at = begin; at < end; ++at) {
    if (tokens.Is(at, ";")) return {begin, at + 1};
    if (at == begin && tokens.IsOneOf(at, cAccessWords)) {
      const int colon = tokens.IsWord(at + 1) ? at + 2 : at + 1;
      if (tokens.Is(colon, ":")) return {begin, colon + 1};
    }
    isRecord = isRecord || (!hasGroup && tokens.IsOneOf(at, cRecordWords));
    hasValue = hasValue || (!hasGroup && tokens.Is(at, "="));
    hasColon = hasColon || (hasGroup && tokens.Is(at, ":"));
    if (tokens.Is(at, "<") && !hasGroup) at = std::max(at, tokens.AngleEnd(at));
    if (tokens.IsOneOf(at, "{ ( [") && !tokens.IsOpening(at)) break;
    if (!tokens.IsOpening(at)) continue;
    const int open = at;
    at = tokens.Partner(at);
    if (tokens.Is(open, "(")) hasGroup = true;
    if (!tokens.Is(open, "{")) continue;
    // "A() : a{1} {}" ends after the second braces.
    const bool isMemberValue = hasColon && (tokens.IsWord(open - 1) || tokens.Is(open - 1, ">"));
    const bool goesOn = isRecord || hasValue || isMemberValue;
    if (tokens.Is(at + 1, ";") || tokens.Is(at + 1, ",") || goesOn) continue;
    return {begin, at + 1};
  }
  isWhole = false;
  return {begin, end};
}

std::optional<SourceShape::Statement> SourceShape::Around(int token, int block) const {
  const int end = BlockEnd(block);
  // The text before a token decides about it, so what comes later may be broken.
  for (int at = FirstIn(block); at < end;) {
    bool isWhole = true;
    const Statement next = Next(at, end, isWhole);
    if (next.end > token) return isWhole ? std::optional(next) : std::nullopt;
    at = next.end;
  }
  return std::nullopt;
}

SourceShape::Statement SourceShape::LastOf(int block) const {
  const int end = BlockEnd(block);
  Statement last{FirstIn(block), FirstIn(block)};
  for (int at = FirstIn(block); at < end;) {
    bool isWhole = true;
    last = Next(at, end, isWhole);
    at = last.end;
  }
  return last;
}

// "inline namespace a::b {" has two names, "namespace {" an empty one. No names for other heads.
std::vector<std::string> SourceShape::NamespaceNames(int begin, int brace) const {
  if (tokens.Is(begin, "inline")) ++begin;
  if (!tokens.Is(begin, "namespace") || !tokens.Is(brace, "{")) return {};
  std::vector<std::string> names;
  for (int at = begin + 1; at < brace; ++at)
    if (tokens.IsWord(at)) names.emplace_back(tokens.Text(at));
  if (names.empty()) names.emplace_back();
  return names;
}

std::vector<std::string> SourceShape::NamespacesAround(int token) const {
  std::vector<std::string> names;
  for (int block = BlockAround(token); block >= 0; block = BlockAround(block)) {
    int begin = block;
    while (begin > 0 && !tokens.IsOneOf(begin - 1, "; { }")) --begin;
    const std::vector<std::string> more = NamespaceNames(begin, block);
    names.insert(names.begin(), more.begin(), more.end());
  }
  return names;
}

int SourceShape::NamespaceIn(int begin, int end, const std::vector<std::string>& names,
                             size_t known) const {
  int found = -1;
  for (int at = begin; at < end;) {
    bool isWhole = true;
    const Statement next = Next(at, end, isWhole);
    at = next.end;
    int brace = next.begin;
    while (brace < next.end && !tokens.IsOneOf(brace, "{ ; (")) ++brace;
    const std::vector<std::string> its = NamespaceNames(next.begin, brace);
    const size_t together = known + its.size();
    if (its.empty() || together > names.size() ||
        !std::equal(its.begin(), its.end(), names.begin() + static_cast<std::ptrdiff_t>(known)))
      continue;
    const int inner =
        together == names.size() ? brace : NamespaceIn(brace + 1, BlockEnd(brace), names, together);
    if (inner >= 0) found = inner;
  }
  return found;
}

int SourceShape::NamespaceBlock(const std::vector<std::string>& names) const {
  return names.empty() ? -1 : NamespaceIn(0, tokens.Count(), names, 0);
}

std::string SourceShape::Qualifier(int name) const {
  int begin = name;
  while (tokens.Is(begin - 1, "::")) {
    int before = begin - 2;
    if (tokens.Is(before, ">")) before = tokens.AngleStart(before) - 1;
    if (before < 0 || !tokens.IsWord(before)) break;
    begin = before;
  }
  return begin == name ? std::string() : std::string(tokens.Source(begin, name));
}

size_t SourceShape::LineStart(size_t offset) const {
  const size_t before = offset == 0 ? text.npos : text.rfind('\n', offset - 1);
  return before == text.npos ? 0 : before + 1;
}

size_t SourceShape::LineEnd(size_t offset) const {
  size_t end = std::min(text.find('\n', offset), text.size());
  if (end > offset && end < text.size() && text[end - 1] == '\r') --end;
  return end;
}

std::string SourceShape::Indentation(size_t offset) const {
  const size_t start = LineStart(offset);
  size_t end = start;
  while (end < text.size() && IsBlank(text[end])) ++end;
  return text.substr(start, end - start);
}

std::string_view SourceShape::NewLine() const {
  const size_t end = text.find('\n');
  return end != text.npos && end > 0 && text[end - 1] == '\r' ? "\r\n" : "\n";
}

bool SourceShape::HasAttachedBraces(const IndentHabits& habits) const {
  for (int at = 1; at < tokens.Count(); ++at)
    if (tokens.Is(at, "{") && tokens.IsOneOf(at - 1, ") } const noexcept override"))
      return habits.braces == BraceHabit::cAttached;
  return false;
}

}  // namespace zendry
