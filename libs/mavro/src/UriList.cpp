#include "UriList.h"

#include <algorithm>
#include <charconv>
#include <optional>

#include "AsciiCase.h"

namespace mavro {

namespace {

constexpr std::string_view cScheme = "file:";

// The byte of "%XX" at the start of `text`.
std::optional<char> EscapedByte(std::string_view text) {
  constexpr size_t cLength = 3;
  if (text.size() < cLength || text.front() != '%') return std::nullopt;
  unsigned char byte = 0;
  const char* end = text.data() + cLength;
  if (std::from_chars(text.data() + 1, end, byte, 16).ptr != end) return std::nullopt;
  return static_cast<char>(byte);
}

std::string Unescaped(std::string_view text) {
  std::string bytes;
  while (!text.empty()) {
    const std::optional<char> escaped = EscapedByte(text);
    bytes += escaped.value_or(text.front());
    text.remove_prefix(escaped ? 3 : 1);
  }
  return bytes;
}

// The path of a local file, "file:/PATH" or "file://HOST/PATH" (HOST may be missing); empty for any
// other address.
std::string LocalPathOf(std::string_view uri, std::string_view host) {
  if (!EqualNoCase(uri.substr(0, cScheme.size()), cScheme)) return "";
  uri.remove_prefix(cScheme.size());
  if (uri.starts_with("//")) {
    uri.remove_prefix(2);
    const std::string_view named = uri.substr(0, uri.find('/'));
    const bool isHere = named.empty() || EqualNoCase(named, "localhost") ||
                        (!host.empty() && EqualNoCase(named, host));
    if (!isHere) return "";
    uri.remove_prefix(named.size());
  }
  if (!uri.starts_with('/')) return "";
  const std::string path = Unescaped(uri);
  return path.find('\0') == std::string::npos ? path : "";
}

}  // namespace

std::vector<std::string> LocalPathsOf(std::string_view uriList, std::string_view host) {
  std::vector<std::string> paths;
  while (!uriList.empty()) {
    std::string_view line = uriList.substr(0, uriList.find('\n'));
    uriList.remove_prefix(std::min(line.size() + 1, uriList.size()));
    if (line.ends_with('\r')) line.remove_suffix(1);
    if (std::string path = LocalPathOf(line, host); !path.empty()) paths.push_back(std::move(path));
  }
  return paths;
}

}  // namespace mavro
