#include "tags/MemberMacros.h"

#include <optional>

#include "base/TextReader.h"
#include "tags/MacroText.h"
#include "tags/TagParser.h"

namespace zendry {

std::string BodyOfMacro(std::string_view text, int line, std::string_view name) {
  const std::optional<MacroText> macro = ReadMacro(text, line, name);
  return macro && !macro->takesArguments ? macro->body : std::string();
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
    // The name goes into those of unnamed blocks, which must differ from those of the file.
    tags.fileName = macro.name + " of " + file.fileName;
    const std::string body = BodyOfMacro(text, macro.line, macro.name);
    if (!body.empty()) {
      const std::string block = "struct " + macro.name + " {\n" + body + "\n;};\n";
      TextReader reader(block);
      const ReservedNamesKept kept;
      theTagParser.parseBuffer(tags, &reader, false);
      theTagParser.Bind(tags);
    }
  }
  for (auto& [name, record] : tags.classes) {
    record.module = &file;
    for (TagItem& member : record.members) member.line = macro.line;
  }
  TagClass* found = tags.findClass(macro.name);
  if (!found || (found->members.empty() && found->macros.empty())) return nullptr;
  found->module = &file;
  for (TagItem& member : found->members) member.module = &file;
  return found;
}

TagClass* MemberMacros::BlockNamed(std::string_view name) {
  for (auto& [place, expansion] : expansions) {
    const auto found = expansion.tags.classes.find(name);
    if (found != expansion.tags.classes.end() && found->second.line >= 0) return &found->second;
  }
  return nullptr;
}

}  // namespace zendry
