#include "lsp/LspUri.h"

#include <vector>

#include "UriList.h"
#include "base/Paths.h"

namespace zendry {

namespace {

// What an address may hold as it is.
constexpr std::string_view cPlain =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~/";
constexpr std::string_view cDigits = "0123456789ABCDEF";

}  // namespace

std::string PathOfUri(std::string_view uri) {
  if (uri.find_first_of("\r\n") != uri.npos) return "";
  const std::vector<std::string> paths = mavro::LocalPathsOf(uri, "");
  return paths.empty() ? "" : TidyPath(paths.front());
}

std::string UriOfPath(std::string_view path) {
  std::string uri = "file://";
  for (const char c : path) {
    if (cPlain.find(c) != cPlain.npos) {
      uri += c;
      continue;
    }
    const auto byte = static_cast<unsigned char>(c);
    uri += '%';
    uri += cDigits[byte / 16];
    uri += cDigits[byte % 16];
  }
  return uri;
}

}  // namespace zendry
