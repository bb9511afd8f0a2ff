#include "tags/TagKeywords.h"

#include <algorithm>
#include <array>

namespace zendry {
namespace {

constexpr uint8_t Bit(Language language) {
  return static_cast<uint8_t>(1 << static_cast<int>(language));
}

constexpr uint8_t cC = Bit(Language::cC);
constexpr uint8_t cCpp = Bit(Language::cCpp);
constexpr uint8_t cCSharp = Bit(Language::cCSharp);
constexpr uint8_t cJava = Bit(Language::cJava);
constexpr uint8_t cVera = Bit(Language::cVera);

// "break", "continue", "delete", "true", "false" and the casts are plain names on purpose.
constexpr KeywordRow cKeywords[] = {
    {"__attribute__", Keyword::cAttribute, cC | cCpp | cCSharp},
    {"abstract", Keyword::cAbstract, cCSharp | cJava},
    {"bool", Keyword::cBool, cCpp | cJava},
    {"byte", Keyword::cByte, cJava},
    {"bad_state", Keyword::cBadState, cVera},
    {"bad_trans", Keyword::cBadTrans, cVera},
    {"bind", Keyword::cBind, cVera},
    {"bind_var", Keyword::cBindVar, cVera},
    {"bit", Keyword::cBit, cVera},
    {"case", Keyword::cCase, cC | cCpp | cCSharp | cJava},
    {"catch", Keyword::cCatch, cCpp | cCSharp},
    {"char", Keyword::cChar, cC | cCpp | cCSharp | cJava},
    {"class", Keyword::cClass, cCpp | cCSharp | cJava | cVera},
    {"const", Keyword::cConst, cC | cCpp | cCSharp | cJava},
    {"constraint", Keyword::cConstraint, cVera},
    {"coverage_block", Keyword::cCoverageBlock, cVera},
    {"coverage_def", Keyword::cCoverageDef, cVera},
    {"default", Keyword::cDefault, cC | cCpp | cCSharp | cJava},
    {"delegate", Keyword::cDelegate, cCSharp},
    {"do", Keyword::cDo, cC | cCpp | cCSharp | cJava},
    {"double", Keyword::cDouble, cC | cCpp | cCSharp | cJava},
    {"else", Keyword::cElse, cC | cCpp | cJava},
    {"enum", Keyword::cEnum, cC | cCpp | cCSharp | cVera},
    {"explicit", Keyword::cExplicit, cCpp | cCSharp},
    {"extern", Keyword::cExtern, cC | cCpp | cCSharp | cVera},
    {"extends", Keyword::cExtends, cJava | cVera},
    {"event", Keyword::cEvent, cCSharp | cVera},
    {"final", Keyword::cFinal, cJava},
    {"float", Keyword::cFloat, cC | cCpp | cCSharp | cJava},
    {"for", Keyword::cFor, cC | cCpp | cCSharp | cJava},
    {"friend", Keyword::cFriend, cCpp},
    {"function", Keyword::cFunction, cVera},
    {"goto", Keyword::cGoto, cC | cCpp | cCSharp | cJava},
    {"if", Keyword::cIf, cC | cCpp | cCSharp | cJava},
    {"implements", Keyword::cImplements, cJava},
    {"import", Keyword::cImport, cJava},
    {"inline", Keyword::cInline, cCpp},
    {"int", Keyword::cInt, cC | cCpp | cCSharp | cJava},
    {"inout", Keyword::cInout, cVera},
    {"input", Keyword::cInput, cVera},
    {"integer", Keyword::cInteger, cVera},
    {"interface", Keyword::cInterface, cCSharp | cJava | cVera},
    {"internal", Keyword::cInternal, cCSharp},
    {"local", Keyword::cLocal, cVera},
    {"long", Keyword::cLong, cC | cCpp | cCSharp | cJava},
    {"m_bad_state", Keyword::cMBadState, cVera},
    {"m_bad_trans", Keyword::cMBadTrans, cVera},
    {"m_state", Keyword::cMState, cVera},
    {"m_trans", Keyword::cMTrans, cVera},
    {"mutable", Keyword::cMutable, cCpp},
    {"namespace", Keyword::cNamespace, cCpp | cCSharp},
    {"new", Keyword::cNew, cCpp | cCSharp | cJava},
    {"newcov", Keyword::cNewcov, cVera},
    {"native", Keyword::cNative, cJava},
    {"operator", Keyword::cOperator, cCpp | cCSharp},
    {"output", Keyword::cOutput, cVera},
    {"overload", Keyword::cOverload, cCpp},
    {"override", Keyword::cOverride, cCSharp},
    {"packed", Keyword::cPacked, cVera},
    {"port", Keyword::cPort, cVera},
    {"package", Keyword::cPackage, cJava},
    {"private", Keyword::cPrivate, cCpp | cCSharp | cJava},
    {"program", Keyword::cProgram, cVera},
    {"protected", Keyword::cProtected, cCpp | cCSharp | cJava | cVera},
    {"public", Keyword::cPublic, cCpp | cCSharp | cJava | cVera},
    {"register", Keyword::cRegister, cC | cCpp},
    {"return", Keyword::cReturn, cC | cCpp | cCSharp | cJava},
    {"shadow", Keyword::cShadow, cVera},
    {"state", Keyword::cState, cVera},
    {"short", Keyword::cShort, cC | cCpp | cCSharp | cJava},
    {"signed", Keyword::cSigned, cC | cCpp},
    {"static", Keyword::cStatic, cC | cCpp | cCSharp | cJava | cVera},
    {"string", Keyword::cString, cCSharp | cVera},
    {"struct", Keyword::cStruct, cC | cCpp | cCSharp},
    {"switch", Keyword::cSwitch, cC | cCpp | cCSharp | cJava},
    {"synchronized", Keyword::cSynchronized, cJava},
    {"task", Keyword::cTask, cVera},
    {"template", Keyword::cTemplate, cCpp},
    {"this", Keyword::cThis, cCpp | cCSharp | cJava},
    {"throw", Keyword::cThrow, cCpp | cCSharp | cJava},
    {"throws", Keyword::cThrows, cJava},
    {"transient", Keyword::cTransient, cJava},
    {"trans", Keyword::cTrans, cVera},
    {"transition", Keyword::cTransition, cVera},
    {"try", Keyword::cTry, cCpp | cCSharp},
    {"typedef", Keyword::cTypedef, cC | cCpp | cCSharp | cVera},
    {"typename", Keyword::cTypename, cCpp},
    {"uint", Keyword::cUint, cCSharp},
    {"ulong", Keyword::cUlong, cCSharp},
    {"union", Keyword::cUnion, cC | cCpp},
    {"unsigned", Keyword::cUnsigned, cC | cCpp | cCSharp},
    {"ushort", Keyword::cUshort, cCSharp},
    {"using", Keyword::cUsing, cCpp | cCSharp},
    {"virtual", Keyword::cVirtual, cCpp | cCSharp | cVera},
    {"void", Keyword::cVoid, cC | cCpp | cCSharp | cJava | cVera},
    {"volatile", Keyword::cVolatile, cC | cCpp | cCSharp | cJava},
    {"wchar_t", Keyword::cWcharT, cC | cCpp | cCSharp},
    {"while", Keyword::cWhile, cC | cCpp | cCSharp | cJava},
};
static_assert(std::size(cKeywords) == cKeywordCount);

constexpr bool RowsStandAtTheirIds() {
  for (int id = 0; id < cKeywordCount; ++id)
    if (cKeywords[id].keyword != static_cast<Keyword>(id)) return false;
  return true;
}
static_assert(RowsStandAtTheirIds());

constexpr ModernRow cModernWords[] = {
    {"noexcept", ModernWord::cAfterParameters},
    {"override", ModernWord::cAfterParameters},
    {"final", ModernWord::cFinal},
    {"requires", ModernWord::cRequires},
    {"alignas", ModernWord::cWithGroup, true},
    {"__declspec", ModernWord::cWithGroup, true},
    {"_Alignas", ModernWord::cWithGroup, true},
    {"decltype", ModernWord::cTypeWithGroup},
    {"static_assert", ModernWord::cAssertion, true},
    {"_Static_assert", ModernWord::cAssertion, true},
    {"constexpr", ModernWord::cAfterIf},
    {"consteval", ModernWord::cAfterIf},
    {"export", ModernWord::cExport},
    {"import", ModernWord::cModule},
    {"module", ModernWord::cModule},
};
constexpr int cModernCount = std::size(cModernWords);

constexpr size_t cSlots = 1024;  // a power of two, large enough that most words don't collide
constexpr uint8_t cEmpty = 255;
static_assert(cKeywordCount + cModernCount < cEmpty);

constexpr size_t SlotOf(std::string_view word) {
  const auto byte = [word](size_t i) { return static_cast<unsigned char>(word[i]); };
  const size_t last = word.size() - 1;
  return (byte(0) * 37 + byte(last) * 101 + byte(last / 2) * 211 + word.size() * 613) % cSlots;
}

constexpr std::string_view TextOf(int entry) {
  return entry < cKeywordCount ? cKeywords[entry].text : cModernWords[entry - cKeywordCount].text;
}

// Entries of both tables, modern words after the keywords, each in its slot or in the next free
// one.
constexpr auto cTable = [] {
  std::array<uint8_t, cSlots> slots{};
  slots.fill(cEmpty);
  for (int entry = 0; entry < cKeywordCount + cModernCount; ++entry) {
    size_t slot = SlotOf(TextOf(entry));
    while (slots[slot] != cEmpty) slot = (slot + 1) % cSlots;
    slots[slot] = static_cast<uint8_t>(entry);
  }
  return slots;
}();

constexpr size_t cLongestWord = [] {
  size_t longest = 0;
  for (int entry = 0; entry < cKeywordCount + cModernCount; ++entry)
    longest = std::max(longest, TextOf(entry).size());
  return longest;
}();

}  // namespace

std::span<const KeywordRow> Keywords() {
  return cKeywords;
}

std::span<const ModernRow> ModernWords() {
  return cModernWords;
}

WordMeaning MeaningOf(std::string_view word, Language language) {
  WordMeaning meaning;
  if (word.empty() || word.size() > cLongestWord) return meaning;
  for (size_t slot = SlotOf(word); cTable[slot] != cEmpty; slot = (slot + 1) % cSlots) {
    const int entry = cTable[slot];
    if (TextOf(entry) != word) continue;
    if (entry >= cKeywordCount) {
      const ModernRow& row = cModernWords[entry - cKeywordCount];
      if (language == Language::cCpp || (row.isInC && language == Language::cC))
        meaning.modern = row.word;
    } else if (cKeywords[entry].IsKnownIn(language)) {
      meaning.keyword = cKeywords[entry].keyword;
    } else {
      continue;
    }
    break;
  }
  return meaning;
}

}  // namespace zendry
