#include "config/TrustedKeys.h"

#include <algorithm>
#include <string_view>

#include "base/TextDigest.h"

namespace zendry {

namespace {

constexpr size_t cMostKeys = 1000;
constexpr char cDigits[] = "0123456789abcdef";

// The digest finds a line, and the text after it proves that it is the right one. Bytes that a line
// can't hold are written as "%" and two digits.
std::string LineOf(const std::string& key) {
  std::string line;
  for (int shift = 60; shift >= 0; shift -= 4) line += cDigits[DigestOf(key) >> shift & 15];
  line += ' ';
  for (const char c : key) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < ' ' || byte == '%' || byte == 0x7F)
      line.append("%").append(1, cDigits[byte >> 4]).append(1, cDigits[byte & 15]);
    else
      line += c;
  }
  return line;
}

std::vector<std::string> LinesIn(std::string_view text) {
  std::vector<std::string> lines;
  while (!text.empty()) {
    const std::string_view line = text.substr(0, text.find('\n'));
    if (!line.empty()) lines.emplace_back(line);
    text.remove_prefix(std::min(line.size() + 1, text.size()));
  }
  return lines;
}

bool Holds(const std::vector<std::string>& lines, const std::string& line) {
  return std::find(lines.begin(), lines.end(), line) != lines.end();
}

}  // namespace

TrustedKeys::TrustedKeys(const std::string& folder) {
  if (!folder.empty()) path = folder + "/trusted";
}

bool TrustedKeys::Has(const std::string& key) const {
  return !path.empty() && Holds(LinesIn(mavro::ReadFileText(path).text), LineOf(key));
}

mavro::FileResult TrustedKeys::Add(const std::vector<std::string>& keys) const {
  if (path.empty()) return {"What you trust is not kept: there is no profile folder"};
  const mavro::FileText old = mavro::ReadFileText(path);
  if (!old.Ok() && !old.isMissing) return old;
  std::vector<std::string> lines = LinesIn(old.text);
  for (const std::string& key : keys)
    if (std::string line = LineOf(key); !Holds(lines, line)) lines.push_back(std::move(line));
  if (lines.size() > cMostKeys)
    lines.erase(lines.begin(), lines.end() - static_cast<std::ptrdiff_t>(cMostKeys));
  std::string text;
  for (const std::string& line : lines) text += line + "\n";
  if (text == old.text) return {};
  return mavro::SaveFileText(path, text);
}

}  // namespace zendry
