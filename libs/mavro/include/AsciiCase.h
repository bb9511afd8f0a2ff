#pragma once

#include <algorithm>
#include <string_view>

namespace mavro {

// Letters of ASCII by the other case; every other byte stays.
constexpr char AsciiLower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}
constexpr char AsciiUpper(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

// Whether two texts are the same but for the case of their ASCII letters.
constexpr bool EqualNoCase(std::string_view one, std::string_view other) {
  return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                    [](char a, char b) { return AsciiLower(a) == AsciiLower(b); });
}

}  // namespace mavro
