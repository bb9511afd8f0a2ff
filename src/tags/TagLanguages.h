#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace zendry {

// The value is the language's id.
enum class Language { cC, cCpp, cCSharp, cJava, cVera };
inline constexpr int cLanguageCount = 5;

// What a tag can be, whatever its language calls it.
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
  std::string_view badType;  // what is asserted of a tag type that the language has no kind for
};

std::span<const LanguageRecord> Languages();
const LanguageRecord& RecordOf(Language language);
// "C++" and the like, upper or lower case.
std::optional<Language> LanguageNamed(std::string_view name);

// The kind of a type of tag in a language; null when it has none.
const TagKind* FindKind(Language language, TagType type);
// The same where the language must have one: else an assertion of its own fails.
const TagKind& KindOf(Language language, TagType type);
// False too when the language has no such kind.
bool IsKindEnabled(Language language, TagType type);
// C and C++ share the flag. Nothing happens when the language has no such kind.
void EnableKind(Language language, TagType type, bool enabled);

}  // namespace zendry
