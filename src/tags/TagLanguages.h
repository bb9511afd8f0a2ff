#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace zendry {

// The value is the language's id.
enum class Language { cC, cCpp, cCSharp, cJava, cVera };
inline constexpr int cLanguageCount = 5;

// The types of tags, independent of the names that a language gives them.
enum class TagType {
  cUndefined,
  cClass,
  cEnum,
  cEnumerator,
  cEvent,
  cField,
  cFunction,
  cInterface,
  cLocal,
  cMember,
  cMethod,
  cNamespace,
  cPackage,
  cProgram,
  cProperty,
  cPrototype,
  cStruct,
  cTask,
  cTypedef,
  cUnion,
  cVariable,
  cExternVar,
  cMacro
};

// A kind of tag in one language. C and C++ have one table of kinds.
struct TagKind {
  TagType type;
  char letter;
  std::string_view name;
  std::string_view description;
  bool enabledAtStart;
};

struct LanguageRecord {
  Language language;
  std::string_view name;
  std::span<const TagKind> kinds;
  std::span<const std::string_view> extensions;
  std::string_view badType;  // text of the assertion for a tag type without a kind in the language
};

std::span<const LanguageRecord> Languages();
const LanguageRecord& RecordOf(Language language);
// The language with a name such as "C++", in upper or lower case.
std::optional<Language> LanguageNamed(std::string_view name);

// The kind of a tag type in a language; null when the language has none.
const TagKind* FindKind(Language language, TagType type);
// The same, but the language must have one: else the language's own assertion fails.
const TagKind& KindOf(Language language, TagType type);
// Also false when the language has no such kind.
bool IsKindEnabled(Language language, TagType type);
// C and C++ share the flag. Does nothing when the language has no such kind.
void EnableKind(Language language, TagType type, bool enabled);

}  // namespace zendry
