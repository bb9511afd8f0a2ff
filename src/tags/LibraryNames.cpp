#include "tags/LibraryNames.h"

#include <algorithm>

#include "FileText.h"

namespace zendry {

namespace {

// Takes the part before the next TAB off a line.
std::string_view TakeField(std::string_view& line) {
  const std::string_view field = line.substr(0, line.find('\t'));
  line.remove_prefix(std::min(field.size() + 1, line.size()));
  return field;
}

// The namespace and the name of a line.
std::string_view KeyOf(std::string_view line) {
  return line.substr(0, line.find('\t'));
}

std::string Key(std::string_view nameSpace, std::string_view name) {
  std::string key(nameSpace);
  key += ' ';
  return key += name;
}

}  // namespace

std::string NamesPath(const std::string& definition) {
  std::string names = definition;
  if (!names.empty()) names.back() = 'n';
  return names;
}

void LibraryNames::EnsureText() {
  if (isRead) return;
  isRead = true;
  text = mavro::ReadFileText(path).text;
}

std::string_view LibraryNames::LineAt(size_t start) const {
  return std::string_view(text).substr(start, text.find('\n', start) - start);
}

// The beginning of the first line that isn't before `beginning`.
size_t LibraryNames::FirstLine(std::string_view beginning) {
  EnsureText();
  size_t low = 0, high = text.size();  // beginnings of lines
  while (low < high) {
    const size_t middle = low + (high - low) / 2;
    const size_t before = middle > low ? text.rfind('\n', middle - 1) : text.npos;
    const size_t start = before == text.npos || before < low ? low : before + 1;
    const std::string_view line = LineAt(start);
    if (line < beginning)
      low = std::min(start + line.size() + 1, high);
    else
      high = start;
  }
  return low;
}

TagItem& LibraryNames::ItemAt(size_t start, std::string_view line) {
  const auto [place, isNew] = items.try_emplace(start);
  TagItem& item = place->second;
  if (isNew) {
    const std::string_view key = TakeField(line), kind = TakeField(line);
    const size_t blank = key.find(' ');
    item.name = key.substr(blank + 1);
    item.kind = kind.empty() ? 0 : kind.front();
    item.type = TakeField(line);
    item.signature = TakeField(line);
  }
  return item;
}

void LibraryNames::Find(std::vector<TagItem*>& out, std::string_view nameSpace,
                        std::string_view name) {
  const std::string key = Key(nameSpace, name);
  for (size_t start = FirstLine(key); start < text.size();) {
    const std::string_view line = LineAt(start);
    if (!line.starts_with(key)) break;
    if (KeyOf(line) == key) out.push_back(&ItemAt(start, line));
    start += line.size() + 1;
  }
}

void LibraryNames::List(std::vector<TagItem*>& out, std::string_view nameSpace,
                        std::string_view prefix) {
  const std::string key = Key(nameSpace, prefix);
  std::string_view last;
  for (size_t start = FirstLine(key); start < text.size();) {
    const std::string_view line = LineAt(start);
    if (!line.starts_with(key)) break;
    const std::string_view own = KeyOf(line);
    if (own != last && own.size() > nameSpace.size() + 1) out.push_back(&ItemAt(start, line));
    last = own;
    start += line.size() + 1;
  }
}

std::optional<std::string> LibraryNames::NamespaceOf(const TagItem& item) const {
  for (const auto& [start, own] : items) {
    if (&own != &item) continue;
    const std::string_view key = KeyOf(LineAt(start));
    return std::string(key.substr(0, key.find(' ')));
  }
  return {};
}

bool LibraryNames::HasNamespace(std::string_view nameSpace) {
  const std::string key = Key(nameSpace, "");
  return LineAt(FirstLine(key)).starts_with(key);
}

}  // namespace zendry
