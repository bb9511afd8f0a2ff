#pragma once

#include <algorithm>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

// What a key may do to a text, known without the editor: letters replace the selections,
// indentation is a matter of the lines at the carets, and brackets may get partners. For tests that
// type at random.

namespace test {

struct Selected {
  int start = 0;
  int end = 0;
};

// Places in order, with those that overlap, and carets at the edge of another place, made one.
inline std::vector<Selected> Merged(const std::vector<Selected>& places) {
  std::vector<Selected> merged;
  for (const Selected& place : places) {
    const bool touches = !merged.empty() && place.start == merged.back().end;
    const bool isCaret =
        touches && (place.start == place.end || merged.back().start == merged.back().end);
    if (isCaret || (!merged.empty() && place.start < merged.back().end))
      merged.back().end = std::max(merged.back().end, place.end);
    else
      merged.push_back(place);
  }
  return merged;
}

// Lines that may be indented anew, counted from 0; others are as they were typed.
struct LineSpan {
  size_t first = 0;
  size_t last = 0;
};

inline std::vector<std::string_view> ModelLines(std::string_view text) {
  std::vector<std::string_view> lines;
  for (size_t at = 0;;) {
    const size_t end = text.find('\n', at);
    if (end == text.npos) {
      lines.push_back(text.substr(at));
      return lines;
    }
    lines.push_back(text.substr(at, end + 1 - at));
    at = end + 1;
  }
}

inline std::string_view WithoutIndent(std::string_view line) {
  return line.substr(std::min(line.find_first_not_of(" \t"), line.size()));
}

inline std::string WithoutBlanks(std::string_view text) {
  std::string kept(text);
  std::erase_if(kept, [](char c) { return c == ' ' || c == '\t'; });
  return kept;
}

// True if two texts differ at most in the blanks that `trim` takes out of the lines in `spans`.
inline bool SameBut(std::string_view a, std::string_view b, const std::vector<LineSpan>& spans,
                    const std::function<std::string(std::string_view)>& trim) {
  if (a == b) return true;
  const auto linesA = ModelLines(a), linesB = ModelLines(b);
  if (linesA.size() != linesB.size()) return false;
  for (size_t i = 0; i < linesA.size(); ++i) {
    if (linesA[i] == linesB[i]) continue;
    const bool isIn = std::any_of(spans.begin(), spans.end(), [&](const LineSpan& span) {
      return span.first <= i && i <= span.last;
    });
    if (!isIn || trim(linesA[i]) != trim(linesB[i])) return false;
  }
  return true;
}

inline bool SameButIndent(std::string_view a, std::string_view b,
                          const std::vector<LineSpan>& spans) {
  return SameBut(a, b, spans,
                 [](std::string_view line) { return std::string(WithoutIndent(line)); });
}

inline bool SameButBlanks(std::string_view a, std::string_view b,
                          const std::vector<LineSpan>& spans) {
  return SameBut(a, b, spans, [](std::string_view line) { return WithoutBlanks(line); });
}

// A text with each of its selections, which are in order, replaced; and the lines around the
// places.
struct Replaced {
  std::string text;
  std::vector<LineSpan> lines;
};

inline Replaced ReplaceAll(std::string_view before, const std::vector<Selected>& places,
                           std::string_view with) {
  Replaced result;
  size_t from = 0;
  const auto lineNow = [&] {
    return static_cast<size_t>(std::count(result.text.begin(), result.text.end(), '\n'));
  };
  for (const Selected& place : places) {
    result.text += before.substr(from, static_cast<size_t>(place.start) - from);
    const size_t line = lineNow();
    result.text += with;
    result.lines.push_back({line > 0 ? line - 1 : 0, lineNow() + 1});
    from = static_cast<size_t>(place.end);
  }
  result.text += before.substr(from);
  return result;
}

inline char PartnerInModel(char typed) {
  constexpr std::string_view cOpeners = "([{\"'<", cClosers = ")]}\"'>";
  const size_t at = cOpeners.find(typed);
  return at == cOpeners.npos ? '\0' : cClosers[at];
}

}  // namespace test
