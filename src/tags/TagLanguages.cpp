#include "tags/TagLanguages.h"

#include <algorithm>
#include <array>

#include "AsciiCase.h"
#include "Assert.h"

namespace zendry {
namespace {

using enum TagType;

constexpr bool cOn = true;
constexpr bool cOff = false;

constexpr TagKind cCKinds[] = {
    {cClass, 'c', "class", "classes", cOn},
    {cMacro, 'd', "macro", "macro definitions", cOn},
    {cEnumerator, 'e', "enumerator", "enumerators (values inside an enumeration)", cOn},
    {cFunction, 'f', "function", "function definitions", cOn},
    {cEnum, 'g', "enum", "enumeration names", cOn},
    {cLocal, 'l', "local", "local variables", cOff},
    {cMember, 'm', "member", "class, struct, and union members", cOn},
    {cNamespace, 'n', "namespace", "namespaces", cOn},
    {cPrototype, 'p', "prototype", "function prototypes", cOn},
    {cStruct, 's', "struct", "structure names", cOn},
    {cTypedef, 't', "typedef", "typedefs", cOn},
    {cUnion, 'u', "union", "union names", cOn},
    {cVariable, 'v', "variable", "variable definitions", cOn},
    {cExternVar, 'x', "externvar", "external variable declarations", cOff},
};

constexpr TagKind cCSharpKinds[] = {
    {cClass, 'c', "class", "classes", cOn},
    {cMacro, 'd', "macro", "macro definitions", cOn},
    {cEnumerator, 'e', "enumerator", "enumerators (values inside an enumeration)", cOn},
    {cEvent, 'E', "event", "events", cOn},
    {cField, 'f', "field", "fields", cOn},
    {cEnum, 'g', "enum", "enumeration names", cOn},
    {cInterface, 'i', "interface", "interfaces", cOn},
    {cLocal, 'l', "local", "local variables", cOff},
    {cMethod, 'm', "method", "methods", cOn},
    {cNamespace, 'n', "namespace", "namespaces", cOn},
    {cProperty, 'p', "property", "properties", cOn},
    {cStruct, 's', "struct", "structure names", cOn},
    {cTypedef, 't', "typedef", "typedefs", cOn},
};

constexpr TagKind cJavaKinds[] = {
    {cClass, 'c', "class", "classes", cOn},
    {cField, 'f', "field", "fields", cOn},
    {cInterface, 'i', "interface", "interfaces", cOn},
    {cLocal, 'l', "local", "local variables", cOff},
    {cMethod, 'm', "method", "methods", cOn},
    {cPackage, 'p', "package", "packages", cOn},
};

constexpr TagKind cVeraKinds[] = {
    {cClass, 'c', "class", "classes", cOn},
    {cMacro, 'd', "macro", "macro definitions", cOn},
    {cEnumerator, 'e', "enumerator", "enumerators (values inside an enumeration)", cOn},
    {cFunction, 'f', "function", "function definitions", cOn},
    {cEnum, 'g', "enum", "enumeration names", cOn},
    {cLocal, 'l', "local", "local variables", cOff},
    {cMember, 'm', "member", "class, struct, and union members", cOn},
    {cProgram, 'p', "program", "programs", cOn},
    {cPrototype, 'P', "prototype", "function prototypes", cOff},
    {cTask, 't', "task", "tasks", cOn},
    {cTypedef, 'T', "typedef", "typedefs", cOn},
    {cVariable, 'v', "variable", "variable definitions", cOn},
    {cExternVar, 'x', "externvar", "external variable declarations", cOff},
};

constexpr std::string_view cCExtensions[] = {"c"};
constexpr std::string_view cCppExtensions[] = {"c++", "cc", "cp",  "cpp", "cxx", "h", "h++",
                                               "hh",  "hp", "hpp", "hxx", "C",   "H"};
constexpr std::string_view cCSharpExtensions[] = {"cs"};
constexpr std::string_view cJavaExtensions[] = {"java"};
constexpr std::string_view cVeraExtensions[] = {"vr", "vri", "vrh"};

constexpr std::string_view cBadCType = "\"Bad C tag type\" == NULL";

constexpr LanguageRecord cLanguages[] = {
    {Language::cC, "C", cCKinds, cCExtensions, cBadCType},
    {Language::cCpp, "C++", cCKinds, cCppExtensions, cBadCType},
    {Language::cCSharp, "C#", cCSharpKinds, cCSharpExtensions, "\"Bad C# tag type\" == NULL"},
    {Language::cJava, "Java", cJavaKinds, cJavaExtensions, "\"Bad Java tag type\" == NULL"},
    {Language::cVera, "Vera", cVeraKinds, cVeraExtensions, "\"Bad Vera tag type\" == NULL"},
};
static_assert(std::size(cLanguages) == cLanguageCount);

constexpr int cTypeCount = static_cast<int>(cMacro) + 1;

// The facts about one type of tag in one language.
struct KindState {
  const TagKind* kind = nullptr;
  bool enabled = false;
};

using KindStates = std::array<std::array<KindState, cTypeCount>, cLanguageCount>;

constexpr KindStates StatesAtStart() {
  KindStates states{};
  for (const LanguageRecord& record : cLanguages)
    for (const TagKind& kind : record.kinds)
      states[static_cast<int>(record.language)][static_cast<int>(kind.type)] = {
          &kind, kind.enabledAtStart};
  return states;
}

KindStates theKindStates = StatesAtStart();

KindState& StateOf(Language language, TagType type) {
  return theKindStates[static_cast<int>(language)][static_cast<int>(type)];
}

}  // namespace

std::span<const LanguageRecord> Languages() {
  return cLanguages;
}

const LanguageRecord& RecordOf(Language language) {
  return cLanguages[static_cast<int>(language)];
}

std::optional<Language> LanguageNamed(std::string_view name) {
  for (const LanguageRecord& record : cLanguages)
    if (mavro::EqualNoCase(record.name, name)) return record.language;
  return {};
}

const TagKind* FindKind(Language language, TagType type) {
  return StateOf(language, type).kind;
}

const TagKind& KindOf(Language language, TagType type) {
  const TagKind* kind = FindKind(language, type);
  MAVRO_ASSERT_AS(kind != nullptr, RecordOf(language).badType.data());
  return *kind;
}

bool IsKindEnabled(Language language, TagType type) {
  return StateOf(language, type).enabled;
}

void EnableKind(Language language, TagType type, bool enabled) {
  for (const LanguageRecord& record : cLanguages) {
    if (record.kinds.data() != RecordOf(language).kinds.data()) continue;
    KindState& state = StateOf(record.language, type);
    state.enabled = enabled && state.kind != nullptr;
  }
}

}  // namespace zendry
