#include "config/SearchSettings.h"

#include "SearchState.h"

namespace zendry {

namespace {

using mavro::theSearch;

struct SwitchRow {
  const char* key;
  bool mavro::SearchState::*isOn;
  bool atFirst;
};
constexpr SwitchRow cSwitches[] = {
    {"find-case", &mavro::SearchState::matchCase, false},
    {"find-word", &mavro::SearchState::wholeWord, false},
    {"find-regexp", &mavro::SearchState::regExp, false},
    {"find-wrap", &mavro::SearchState::wrap, true},
};
constexpr char cWith[] = "find-with";

std::string KeyOf(size_t index) {
  return "find" + std::to_string(index + 1);
}

// A value without any letter isn't stored, and blanks at its ends would be lost to whoever edits
// the file: so texts have a colon in front.
std::string Stored(const std::string& text) {
  const bool fits = text.find_first_of(std::string_view("\n\r\0", 3)) == std::string::npos;
  return fits && !text.empty() ? ":" + text : std::string();
}

std::string Taken(const std::map<std::string, std::string>& values, const std::string& key) {
  const auto found = values.find(key);
  const bool isText = found != values.end() && found->second.starts_with(':');
  return isText ? found->second.substr(1) : std::string();
}

void Put(std::map<std::string, std::string>& values, const std::string& key,
         const std::string& value) {
  if (value.empty())
    values.erase(key);
  else
    values[key] = value;
}

}  // namespace

void TakeSearchSettings(const std::map<std::string, std::string>& values) {
  theSearch = {};
  for (size_t i = mavro::SearchState::cMostRemembered; i-- > 0;) {
    theSearch.findText = Taken(values, KeyOf(i));
    theSearch.Remember();
  }
  theSearch.replaceText = Taken(values, cWith);
  for (const SwitchRow& row : cSwitches) {
    const auto found = values.find(row.key);
    theSearch.*row.isOn = found == values.end() ? row.atFirst : found->second == "1";
  }
}

void StoreSearchSettings(std::map<std::string, std::string>& values) {
  size_t index = 0;
  for (const std::string& text : theSearch.history)
    if (const std::string stored = Stored(text); !stored.empty()) values[KeyOf(index++)] = stored;
  for (; index < mavro::SearchState::cMostRemembered; ++index) values.erase(KeyOf(index));
  Put(values, cWith, Stored(theSearch.replaceText));
  for (const SwitchRow& row : cSwitches) {
    const bool isOn = theSearch.*row.isOn;
    Put(values, row.key, isOn == row.atFirst ? "" : isOn ? "1" : "0");
  }
}

}  // namespace zendry
