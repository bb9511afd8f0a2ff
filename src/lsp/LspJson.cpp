#include "lsp/LspJson.h"

#include <algorithm>
#include <limits>

namespace zendry {

namespace {

// True if the text has no more brackets and values than a message may have. Only literals need to
// be told apart: all else is left to the parser.
bool IsWithinBounds(std::string_view text) {
  int depth = 0;
  size_t values = 0;
  bool isInText = false;
  for (size_t at = 0; at < text.size(); ++at) {
    const char c = text[at];
    if (isInText) {
      if (c == '\\') ++at;
      isInText = c != '"';
      continue;
    }
    if (c == '"') isInText = true;
    if (c == '[' || c == '{') ++depth;
    if (c == ']' || c == '}') --depth;
    if (c == ',' || c == '[' || c == '{') ++values;
    if (depth > cDeepestJson || values > cMostJsonValues) return false;
  }
  return true;
}

}  // namespace

std::optional<Json> ParseJson(std::string_view text) {
  if (!IsWithinBounds(text)) return std::nullopt;
  Json value = Json::parse(text, nullptr, false);
  if (value.is_discarded()) return std::nullopt;
  return value;
}

const Json* FindJson(const Json& value, JsonPath path) {
  const Json* at = &value;
  for (const char* name : path) {
    if (!at->is_object()) return nullptr;
    const auto found = at->find(name);
    if (found == at->end()) return nullptr;
    at = &*found;
  }
  return at;
}

std::string TextAt(const Json& value, JsonPath path) {
  const Json* found = FindJson(value, path);
  return found && found->is_string() ? found->get<std::string>() : std::string();
}

int NumberAt(const Json& value, JsonPath path, int missing) {
  const Json* found = FindJson(value, path);
  if (!found || !found->is_number()) return missing;
  constexpr double cMost = std::numeric_limits<int>::max();
  return static_cast<int>(std::clamp(found->get<double>(), -cMost, cMost));
}

bool IsTrueAt(const Json& value, JsonPath path) {
  const Json* found = FindJson(value, path);
  return found && found->is_boolean() && found->get<bool>();
}

const Json::array_t& ListAt(const Json& value, JsonPath path) {
  static const Json::array_t none;
  const Json* found = FindJson(value, path);
  return found && found->is_array() ? found->get_ref<const Json::array_t&>() : none;
}

std::string WriteJson(const Json& value) {
  return value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

}  // namespace zendry
