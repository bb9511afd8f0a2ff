#pragma once

#include <cctype>
#include <string>
#include <string_view>
#include <vector>

#include "search/LineFind.h"

namespace test {

// The run over a line, told again step by step: the place after the first hit, 0 for none.
inline size_t NaiveRun(std::string_view line, const zendry::LineTerm& term) {
  const auto lower = [&](char c) {
    return term.matchCase || (c & 0x80) ? static_cast<unsigned char>(c)
                                        : std::tolower(static_cast<unsigned char>(c));
  };
  const auto isName = [](char c) { return !(c & 0x80) && (std::isalnum(c) || c == '_'); };
  const size_t length = term.text.size();
  size_t m = 0;
  for (size_t i = 0; length > 0 && i < line.size(); ++i) {
    if (lower(line[i]) == lower(term.text[m]))
      ++m;
    else
      m = 0;
    if (m != length) continue;
    const bool before = i + 1 > length && isName(line[i - length]);
    const bool after = i + 1 < line.size() && isName(line[i + 1]);
    if (!term.wholeWord || (!before && !after)) return i + 1;
    m = 0;
  }
  return 0;
}

// True if a term is anywhere in a line, tried at each place.
inline bool NaiveFull(std::string_view line, const zendry::LineTerm& term) {
  for (size_t at = 0; !term.text.empty() && at + term.text.size() <= line.size(); ++at) {
    const std::string_view here = line.substr(at, term.text.size());
    const bool isWord =
        !term.wholeWord || NaiveRun(here, {term.text, term.matchCase, false}) == here.size();
    if (!isWord || NaiveRun(here, {term.text, term.matchCase, false}) != here.size()) continue;
    if (!term.wholeWord) return true;
    const auto isName = [](char c) { return !(c & 0x80) && (std::isalnum(c) || c == '_'); };
    const size_t end = at + here.size();
    if ((at == 0 || !isName(line[at - 1])) && (end == line.size() || !isName(line[end])))
      return true;
  }
  return false;
}

// The lines with hits as "NUMBER:told" or "NUMBER:missed".
inline std::vector<std::string> NaiveLines(std::string_view text, const zendry::LineTerm& term) {
  std::vector<std::string> found;
  size_t number = 1;
  for (size_t at = 0; at <= text.size(); ++number) {
    size_t end = at;
    while (end < text.size() && text[end] != '\n' && text[end] != '\r') ++end;
    const std::string_view line = text.substr(at, end - at);
    if (NaiveRun(line, term) > 0)
      found.push_back(std::to_string(number) + ":told");
    else if (NaiveFull(line, term))
      found.push_back(std::to_string(number) + ":missed");
    at = end + (text.substr(end, 2) == "\r\n" ? 2 : 1);
  }
  return found;
}

}  // namespace test
