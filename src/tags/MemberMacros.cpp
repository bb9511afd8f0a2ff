#include "tags/MemberMacros.h"

#include <algorithm>

#include "base/TextReader.h"
#include "tags/TagParser.h"

namespace zendry {

namespace {

constexpr size_t cMostBody = 8192;
constexpr std::string_view cBlanks = " \t";

// Takes the word off the beginning of a text, and the blanks before it. False for another word.
bool TakeWord(std::string_view& text, std::string_view word) {
  text.remove_prefix(std::min(text.find_first_not_of(cBlanks), text.size()));
  if (!text.starts_with(word)) return false;
  text.remove_prefix(word.size());
  return true;
}

}  // namespace

std::string BodyOfMacro(std::string_view text, int line, std::string_view name) {
  for (int skipped = 1; skipped < line && !text.empty(); ++skipped)
    text.remove_prefix(std::min(text.find('\n'), text.size() - 1) + 1);
  const bool isThere = TakeWord(text, "#") && TakeWord(text, "define") && TakeWord(text, name);
  if (!isThere || text.empty() || cBlanks.find(text.front()) == cBlanks.npos) return "";
  std::string body;
  for (size_t at = 0; at < text.size() && body.size() < cMostBody; ++at) {
    const bool isSpliced = text[at] == '\\' && text.substr(at + 1).starts_with('\n');
    const bool isSplicedTwice = text[at] == '\\' && text.substr(at + 1).starts_with("\r\n");
    if (text[at] == '\n') break;
    if (isSpliced || isSplicedTwice) at += isSpliced ? 1 : 2;
    body += isSpliced || isSplicedTwice ? ' ' : text[at];
  }
  return body;
}

bool MemberMacros::IsKnown(const TagItem& macro, const TagData& file) const {
  const auto known = expansions.find({&file, macro.line});
  return known != expansions.end() && known->second.generation == file.Generation();
}

TagClass* MemberMacros::MembersOf(const TagItem& macro, TagData& file, std::string_view text) {
  Expansion& expansion = expansions[{&file, macro.line}];
  TagData& tags = expansion.tags;
  if (expansion.generation != file.Generation()) {
    expansion.generation = file.Generation();
    tags.clear();
    tags.fileName = file.fileName;
    const std::string body = BodyOfMacro(text, macro.line, macro.name);
    if (!body.empty()) {
      const std::string block = "struct " + macro.name + " {\n" + body + "\n;};\n";
      TextReader reader(block);
      theTagParser.parseBuffer(tags, &reader, false);
      theTagParser.Bind(tags);
    }
  }
  TagClass* found = tags.findClass(macro.name);
  if (!found || (found->members.empty() && found->macros.empty())) return nullptr;
  found->module = &file;
  for (TagItem& member : found->members) {
    member.line = macro.line;
    member.module = &file;
  }
  return found;
}

}  // namespace zendry
