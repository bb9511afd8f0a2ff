#pragma once

#include <string_view>

namespace zendry {

inline constexpr std::string_view cAnyBlanks = " \t\r\n\v\f";

// The part of a text between its first and its last byte that is none of `blanks`: empty if there
// is none. It views the bytes of `text`.
constexpr std::string_view Trimmed(std::string_view text, std::string_view blanks = cAnyBlanks) {
  const size_t first = text.find_first_not_of(blanks);
  if (first == text.npos) return {};
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

}  // namespace zendry
