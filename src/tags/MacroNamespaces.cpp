#include "tags/MacroNamespaces.h"

#include <algorithm>
#include <set>

#include "base/TrimText.h"
#include "tags/MacroText.h"

namespace zendry {

namespace {

constexpr std::string_view cWordChars =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_";
constexpr std::string_view cDefine = "define";
constexpr std::string_view cNamespace = "namespace";

// Takes the word off the beginning of a text, and what comes before it.
std::string_view TakeNextWord(std::string_view& text) {
  text.remove_prefix(std::min(text.find_first_of(cWordChars), text.size()));
  const std::string_view word = text.substr(0, text.find_first_not_of(cWordChars));
  text.remove_prefix(word.size());
  return word;
}

// The names before the "{" of each "namespace a::b {".
std::vector<std::string> OpenedBy(std::string_view body) {
  std::vector<std::string> opened;
  while (!body.empty()) {
    if (TakeNextWord(body) != cNamespace) continue;
    std::string_view head = body.substr(0, body.find('{'));
    if (head.size() == body.size()) break;
    while (!head.empty())
      if (const std::string_view word = TakeNextWord(head); !word.empty())
        opened.emplace_back(word);
  }
  return opened;
}

// The name of the macro that a line defines; empty without one.
std::string_view NameDefinedOn(std::string_view line) {
  if (!line.starts_with('#')) return {};
  line = Trimmed(line.substr(1));
  if (!line.starts_with(cDefine)) return {};
  line.remove_prefix(cDefine.size());
  return TakeNextWord(line);
}

}  // namespace

void MacroNamespaces::Scan(File& file, std::string_view text) {
  file.openers.clear();
  file.loneWords.clear();
  std::set<std::string_view> seen;
  const std::string_view whole = text;
  for (int line = 1; !text.empty(); ++line) {
    const size_t end = std::min(text.find('\n'), text.size() - 1) + 1;
    const std::string_view trimmed = Trimmed(text.substr(0, text.find('\n')));
    const std::string_view name = NameDefinedOn(trimmed);
    if (!name.empty()) {
      const auto macro = ReadMacro(whole.substr(text.data() - whole.data()), 1, name);
      if (macro && macro->body.find(cNamespace) != std::string::npos)
        if (std::vector<std::string> opened = OpenedBy(macro->body); !opened.empty())
          file.openers.push_back({std::string(name), std::move(opened)});
    } else if (!trimmed.empty() && trimmed.find_first_not_of(cWordChars) == trimmed.npos &&
               seen.insert(trimmed).second) {
      file.loneWords.emplace_back(trimmed, line);
    }
    text.remove_prefix(end);
  }
}

std::vector<std::pair<size_t, int>> MacroNamespaces::FirstLines(
    const std::vector<const TagData*>& files, std::string_view name, const TextOf& textOf) {
  std::set<std::string_view> macros;
  for (const TagData* data : files) {
    File& file = scanned[data];
    if (file.generation != data->Generation()) {
      file.generation = data->Generation();
      Scan(file, textOf(*data));
    }
    for (const Opener& opener : file.openers)
      if (std::find(opener.namespaces.begin(), opener.namespaces.end(), name) !=
          opener.namespaces.end())
        macros.insert(opener.macro);
  }
  std::vector<std::pair<size_t, int>> lines;
  for (size_t i = 0; i < files.size() && !macros.empty(); ++i)
    for (const auto& [word, line] : scanned[files[i]].loneWords) {
      if (!macros.contains(word)) continue;
      lines.emplace_back(i, line);
      break;
    }
  return lines;
}

}  // namespace zendry
