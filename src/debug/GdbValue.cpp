#include "debug/GdbValue.h"

#include <utility>

namespace zendry {

namespace {

constexpr std::string_view cCut = "...";

// The longest part of a text of at most `most` bytes that cuts no UTF-8 character.
std::string_view HeadOf(std::string_view text, size_t most) {
  if (text.size() <= most) return text;
  constexpr size_t cLongestCharacter = 4;
  const auto isMiddle = [text](size_t at) {
    return (static_cast<unsigned char>(text[at]) & 0xC0) == 0x80;
  };
  size_t end = most;
  while (end > 0 && most - end < cLongestCharacter && isMiddle(end)) --end;
  return text.substr(0, isMiddle(end) ? most : end);
}

}  // namespace

void AppendBounded(std::string& text, std::string_view more, size_t most) {
  if (text.size() > most) return;
  if (text.size() + more.size() <= most) {
    text += more;
    return;
  }
  text += HeadOf(more, most - text.size());
  // Fills up, so that a text that is cut is longer than any other and stays as it is.
  text.resize(most, ' ');
  text += cCut;
}

std::string TidyValue(std::string value) {
  constexpr std::string_view cMember = "_M_";
  constexpr size_t cLeastBehind = 6;
  size_t brace = 0, start = 0;
  int closing = 0;  // braces to come that belong to the hidden part
  for (size_t at = 0; at < value.size(); ++at) {
    if (value[at] == '{') brace = at;
    if (value[at] == '}' && closing > 0) {
      value[at] = ' ';
      --closing;
    }
    if (value[at] != '_' || value.compare(at, cMember.size(), cMember) != 0) continue;
    const size_t name = at + cMember.size();
    if (value.size() < name + cLeastBehind) continue;
    if (value[name] == 'd') start = brace;
    if (value.compare(name, 2, "p ") != 0) continue;
    const size_t quote = value.find('"', name);
    if (quote == std::string::npos) break;
    const size_t equals = value.rfind('=', start);
    size_t from = equals == std::string::npos ? 0 : equals;
    if (equals != std::string::npos && value.front() != '{') ++from;
    if (from > quote) continue;
    value.erase(from, quote - from);
    at = start = brace = from;
    closing = 2;
  }
  return value;
}

void ValueText::Begin(std::string_view line) {
  text.clear();
  column.clear();
  Append(line);
}

void ValueText::Append(std::string_view line) {
  if (column.size() < cLongestColumn) AppendBounded(column, line, cLongestValue);
  AppendBounded(text, line, cLongestValue);
}

GdbValue ValueText::Take() {
  return {TidyValue(std::exchange(text, {})), TidyValue(std::exchange(column, {}))};
}

}  // namespace zendry
