#pragma once

#include <charconv>
#include <optional>
#include <string_view>
#include <system_error>

namespace zendry {

// The number at the head of a text as the C library's atoi reads it: white space, a sign, digits;
// 0 without digits. Unlike there, a number too large becomes the largest of its sign.
int ParseInt(std::string_view text);

// Takes a number off the front of a text: digits only, with a "-" where the type has one. Nothing,
// with the text as it was, when none is there or it doesn't fit.
template <class T>
std::optional<T> TakeNumber(std::string_view& text) {
  T number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc()) return {};
  text.remove_prefix(static_cast<size_t>(end - text.data()));
  return number;
}

}  // namespace zendry
