#pragma once

#include <algorithm>
#include <string_view>

namespace mavro {

// Convert an ASCII letter to lower or upper case; every other byte is unchanged.
constexpr char AsciiLower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}
constexpr char AsciiUpper(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

// True if two texts are equal when the case of ASCII letters is ignored.
constexpr bool EqualNoCase(std::string_view one, std::string_view other) {
  return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                    [](char a, char b) { return AsciiLower(a) == AsciiLower(b); });
}

}  // namespace mavro
