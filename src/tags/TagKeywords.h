#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "tags/TagLanguages.h"

namespace zendry {

// Words that the declaration parser acts on. The value is the keyword's id.
enum class Keyword : int8_t {
  cNone = -1,
  cAttribute,
  cAbstract,
  cBool,
  cByte,
  cBadState,
  cBadTrans,
  cBind,
  cBindVar,
  cBit,
  cCase,
  cCatch,
  cChar,
  cClass,
  cConst,
  cConstraint,
  cCoverageBlock,
  cCoverageDef,
  cDefault,
  cDelegate,
  cDo,
  cDouble,
  cElse,
  cEnum,
  cExplicit,
  cExtern,
  cExtends,
  cEvent,
  cFinal,
  cFloat,
  cFor,
  cFriend,
  cFunction,
  cGoto,
  cIf,
  cImplements,
  cImport,
  cInline,
  cInt,
  cInout,
  cInput,
  cInteger,
  cInterface,
  cInternal,
  cLocal,
  cLong,
  cMBadState,
  cMBadTrans,
  cMState,
  cMTrans,
  cMutable,
  cNamespace,
  cNew,
  cNewcov,
  cNative,
  cOperator,
  cOutput,
  cOverload,
  cOverride,
  cPacked,
  cPort,
  cPackage,
  cPrivate,
  cProgram,
  cProtected,
  cPublic,
  cRegister,
  cReturn,
  cShadow,
  cState,
  cShort,
  cSigned,
  cStatic,
  cString,
  cStruct,
  cSwitch,
  cSynchronized,
  cTask,
  cTemplate,
  cThis,
  cThrow,
  cThrows,
  cTransient,
  cTrans,
  cTransition,
  cTry,
  cTypedef,
  cTypename,
  cUint,
  cUlong,
  cUnion,
  cUnsigned,
  cUshort,
  cUsing,
  cVirtual,
  cVoid,
  cVolatile,
  cWcharT,
  cWhile
};
inline constexpr int cKeywordCount = static_cast<int>(Keyword::cWhile) + 1;

struct KeywordRow {
  std::string_view text;
  Keyword keyword;
  uint8_t languages;  // a bit for each language that knows the word

  constexpr bool IsKnownIn(Language language) const {
    return (languages >> static_cast<int>(language) & 1) != 0;
  }
};

std::span<const KeywordRow> Keywords();

// Words of today's C++ that are plain names to the statement rules, by the text that is passed over
// with them so that they don't mislead these rules.
enum class ModernWord : int8_t {
  cNone,
  cAfterParameters,  // may follow a parameter list, with a group in parentheses of its own
  cFinal,            // the same, and may follow the name of a class
  cRequires,         // a constraint follows, up to the body
  cWithGroup,        // like an attribute: dropped with the parentheses after it
  cTypeWithGroup,    // the name of a type; the parentheses after it are dropped
  cAssertion,        // a whole statement without a tag
  cAfterIf,          // belongs to an `if` before it
  cExport,           // may stand before a declaration, or before a block of them
  cModule            // begins a statement about modules, without a tag
};

struct ModernRow {
  std::string_view text;
  ModernWord word;
  bool isInC = false;  // C knows it too
};

std::span<const ModernRow> ModernWords();

// The meaning of a word in a language; both are none for a plain name.
struct WordMeaning {
  Keyword keyword = Keyword::cNone;
  ModernWord modern = ModernWord::cNone;
};

WordMeaning MeaningOf(std::string_view word, Language language);

}  // namespace zendry
