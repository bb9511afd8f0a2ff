#pragma once

#include <initializer_list>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>

namespace zendry {

using Json = nlohmann::json;

// Bounds of a message from outside, so that a short one can't ask for a lot of memory.
constexpr int cDeepestJson = 64;  // brackets within each other
constexpr size_t cMostJsonValues = 1'000'000;

// The value of a JSON text; nothing if it is malformed or passes a bound.
std::optional<Json> ParseJson(std::string_view text);

using JsonPath = std::initializer_list<const char*>;

// The value that a path of names leads to; null if there is none.
const Json* FindJson(const Json& value, JsonPath path);
// The text there; empty if there is none or something else.
std::string TextAt(const Json& value, JsonPath path);
// The number there, within the range of an int; `missing` if there is none.
int NumberAt(const Json& value, JsonPath path, int missing = 0);
bool IsTrueAt(const Json& value, JsonPath path);
// The elements of the array there; none if it is no array.
const Json::array_t& ListAt(const Json& value, JsonPath path);

// The text of a value; bytes that are no UTF-8 become replacement characters.
std::string WriteJson(const Json& value);

}  // namespace zendry
