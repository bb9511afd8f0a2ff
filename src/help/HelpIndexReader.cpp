#include "help/HelpIndexReader.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <utility>

#include "AsciiCase.h"
#include "base/TrimText.h"

namespace zendry {

namespace {

constexpr std::string_view cBlanks = " \t\r\v\f";
constexpr std::string_view cByteOrderMark = "\xEF\xBB\xBF";

std::vector<std::string_view> Words(std::string_view text) {
  std::vector<std::string_view> words;
  for (text = Trimmed(text); !text.empty(); text = Trimmed(text)) {
    const size_t end = std::min(text.find_first_of(cBlanks), text.size());
    words.push_back(text.substr(0, end));
    text.remove_prefix(end);
  }
  return words;
}

// The n of a body "$n"; -1 for other texts.
int NumberOfReference(std::string_view body) {
  if (body.size() < 2 || body[0] != '$') return -1;
  int number = -1;
  const char* end = body.data() + body.size();
  const auto [stop, error] = std::from_chars(body.data() + 1, end, number);
  return error == std::errc() && stop == end && number >= 0 ? number : -1;
}

std::string ReferenceTo(size_t number) {
  char text[32];
  std::snprintf(text, sizeof text, "$%g", static_cast<double>(number));
  return text;
}

struct FieldLetter {
  char letter;
  std::string HelpEntry::*field;
};

constexpr FieldLetter cFieldLetters[] = {{'p', &HelpEntry::params},
                                         {'b', &HelpEntry::brief},
                                         {'r', &HelpEntry::returns},
                                         {'t', &HelpEntry::type}};

}  // namespace

void HelpIndexReader::Read(std::string_view bytes) {
  if (bytes.starts_with(cByteOrderMark)) bytes.remove_prefix(cByteOrderMark.size());
  bool isRest = false;
  while (!bytes.empty()) {
    const std::string_view piece = bytes.substr(0, cLongestLine);
    const size_t end = piece.find('\n');
    const bool isWhole = end != std::string_view::npos;
    std::string_view line = piece.substr(0, end);
    bytes.remove_prefix(line.size() + (isWhole ? 1 : 0));
    if (isWhole && line.ends_with('\r')) line.remove_suffix(1);
    // The rest of a longer line is never a heading: it follows the piece before.
    if (!isRest)
      TakeLine(line);
    else if (field)
      *field += line;
    isRest = !isWhole;
  }
  Flush();
}

void HelpIndexReader::TakeLine(std::string_view line) {
  field = nullptr;
  if (line.starts_with('#')) return TakeHeading(line);
  if (line.starts_with("/*-") || line.starts_with("/*/")) return TakeLanguage(line);
  if (!IsOurLanguage() || TakeField(line)) return;
  AppendLine(textOf == TextOf::cExtra ? index.extra : current.body, line);
}

void HelpIndexReader::TakeHeading(std::string_view line) {
  if (line.starts_with("##")) {
    BeginModule(line);
  } else if (line.starts_with("#-")) {
    BeginEntry({Trimmed(line.substr(2))});
  } else if (line.starts_with("#=")) {
    BeginEntry(Words(line.substr(2)));
  }
}

void HelpIndexReader::BeginModule(std::string_view line) {
  Flush();
  textOf = TextOf::cModule;
  const size_t at = line.find('@');
  const std::string name(Trimmed(line.substr(at == std::string_view::npos ? 2 : at + 1)));
  if (name.empty()) return;
  current.title = name;
  pending = {name};
  if (std::find(index.modules.begin(), index.modules.end(), name) == index.modules.end())
    index.modules.push_back(name);
}

void HelpIndexReader::BeginEntry(std::vector<std::string_view> names) {
  Flush();
  textOf = TextOf::cEntry;
  std::erase(names, std::string_view());
  pending.assign(names.begin(), names.end());
  if (!pending.empty()) current.title = pending.front();
}

void HelpIndexReader::TakeLanguage(std::string_view line) {
  if (line[2] == '/')
    blockLanguage = 0;
  else if (line.size() > 3)
    blockLanguage = mavro::AsciiUpper(line[3]);
}

// "@b" and its kin. False for a plain text line.
bool HelpIndexReader::TakeField(std::string_view line) {
  if (line.size() < 2 || line[0] != '@') return false;
  for (const FieldLetter& row : cFieldLetters) {
    if (line[1] != row.letter) continue;
    line.remove_prefix(2);
    if (line.starts_with(':')) line.remove_prefix(1);
    if (textOf != TextOf::cExtra) AppendLine(current.*row.field, line);
    return true;
  }
  return false;
}

void HelpIndexReader::AppendLine(std::string& to, std::string_view line) {
  if (!to.empty()) to += '\n';
  to += line;
  field = &to;
}

// Stores the current entry under its first key, and a reference to it under each further one.
void HelpIndexReader::Flush() {
  field = nullptr;
  HelpEntry entry = std::exchange(current, HelpEntry());
  const std::vector<std::string> keys = std::exchange(pending, {});
  while (entry.body.ends_with('\n')) entry.body.pop_back();
  const bool hasText = !entry.body.empty() || !entry.brief.empty() || !entry.params.empty() ||
                       !entry.returns.empty() || !entry.type.empty();
  if (entry.title.empty() || keys.empty() || (textOf == TextOf::cModule && !hasText)) return;
  const size_t number = index.topics.size();
  for (const std::string& key : keys) {
    HelpEntry stored;
    if (index.topics.size() == number) {
      stored = std::move(entry);
      stored.sourceOf = NumberOfReference(stored.body);
    } else {
      stored.body = ReferenceTo(number);
      stored.sourceOf = static_cast<int>(number);
    }
    stored.state = stored.sourceOf < 0 ? HelpEntry::cFirst : HelpEntry::cAlias;
    stored.key = key;
    stored.title = stored.Name();
    index.topics.push_back(std::move(stored));
  }
}

}  // namespace zendry
