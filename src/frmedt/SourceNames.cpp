#include "frmedt/SourceNames.h"

#include <algorithm>
#include <cctype>

namespace zendry {

bool IsWord(std::string_view text) {
  const auto isPart = [](unsigned char c) { return std::isalnum(c) || c == '_' || c >= 0x80; };
  return !text.empty() && !std::isdigit(static_cast<unsigned char>(text[0])) &&
         std::all_of(text.begin(), text.end(), isPart);
}

bool IsClassName(std::string_view text) {
  const size_t end = text.find("::");
  if (end == std::string_view::npos) return IsWord(text);
  return IsWord(text.substr(0, end)) && IsClassName(text.substr(end + 2));
}

std::string BetweenQuotes(std::string_view text) {
  std::string safe;
  bool isEscaped = false;
  for (const char c : text) {
    if (c == '"' && !isEscaped) safe += '\\';
    isEscaped = c == '\\' && !isEscaped;
    safe += c;
  }
  if (isEscaped) safe += '\\';
  return safe;
}

}  // namespace zendry
