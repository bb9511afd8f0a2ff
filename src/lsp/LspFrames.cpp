#include "lsp/LspFrames.h"

#include <charconv>

#include "AsciiCase.h"
#include "base/TrimText.h"

namespace zendry {

namespace {

constexpr std::string_view cLengthField = "Content-Length:";
constexpr std::string_view cLineEnd = "\r\n";
constexpr std::string_view cHeaderEnd = "\r\n\r\n";

// A number of decimal digits and nothing else.
std::optional<size_t> NumberOf(std::string_view text) {
  size_t number = 0;
  const char* end = text.data() + text.size();
  const auto [stop, problem] = std::from_chars(text.data(), end, number);
  if (text.empty() || problem != std::errc() || stop != end) return std::nullopt;
  return number;
}

// The length that the header's lines tell; nothing if none does, or not as a number.
std::optional<size_t> LengthIn(std::string_view header) {
  std::optional<size_t> length;
  while (!header.empty()) {
    const std::string_view line = header.substr(0, header.find(cLineEnd));
    header.remove_prefix(std::min(line.size() + cLineEnd.size(), header.size()));
    if (!mavro::EqualNoCase(line.substr(0, cLengthField.size()), cLengthField)) continue;
    length = NumberOf(Trimmed(line.substr(cLengthField.size())));
    if (!length) return std::nullopt;
  }
  return length;
}

}  // namespace

void LspFrames::Feed(std::string_view bytes) {
  if (!error.empty()) return;
  buffer.erase(0, at);
  at = 0;
  buffer += bytes;
}

// False when the header isn't complete.
bool LspFrames::ReadHeader() {
  const std::string_view rest = std::string_view(buffer).substr(at);
  const size_t end = rest.substr(0, cLongestHeader).find(cHeaderEnd);
  if (end == rest.npos) {
    if (rest.size() >= cLongestHeader) error = "a message has no header";
    return false;
  }
  length = LengthIn(rest.substr(0, end));
  if (!length)
    error = "the header of a message tells no length";
  else if (*length > cLongestMessage)
    error = "a message of " + std::to_string(*length) + " bytes is too long";
  at += end + cHeaderEnd.size();
  return error.empty();
}

std::optional<std::string> LspFrames::Next() {
  if (!error.empty() || (!length && !ReadHeader())) return std::nullopt;
  if (buffer.size() - at < *length) return std::nullopt;
  std::string body = buffer.substr(at, *length);
  at += *length;
  length.reset();
  return body;
}

std::string LspFrame(std::string_view body) {
  std::string frame(cLengthField);
  frame.append(" ").append(std::to_string(body.size())).append(cHeaderEnd).append(body);
  return frame;
}

}  // namespace zendry
