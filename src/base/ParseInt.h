#pragma once

#include <charconv>
#include <optional>
#include <string_view>
#include <system_error>

namespace zendry {

// The number at the beginning of a text, read like the C library's atoi: white space, a sign,
// digits; 0 without digits. Unlike with atoi, a number that is too large becomes the largest of its
// sign.
int ParseInt(std::string_view text);

// Takes a number off the beginning of a text: digits only, with a "-" if the type is signed.
// Returns nothing and leaves the text as it was when there is no number or it doesn't fit.
template <class T>
std::optional<T> TakeNumber(std::string_view& text) {
  T number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc()) return {};
  text.remove_prefix(static_cast<size_t>(end - text.data()));
  return number;
}

}  // namespace zendry
