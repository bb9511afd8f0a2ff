#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace zendry {

class TextScanner;

// Whether a word before a type says nothing of its members: "const", "static", "struct".
bool IsPassedOver(std::string_view word);
// Whether a word can be the type in a declaration, unlike "return" or "new".
bool CanNameType(std::string_view word);

// An expression such as "p->next[i].x", read as "p.next.x".
struct Chain {
  std::string text;  // empty when there is none
  int start = 0;     // where it begins
  int wordEnd = 0;   // behind the last letter of the word that was asked for
};

// The chain whose last word the byte at `start` belongs to. An index in brackets is left out. A
// chain that doesn't fit the buffer of 512 bytes is none.
Chain readChain(TextScanner& scanner, int start);

// The last byte of the word that a member operator at `place` works on: it stands before the
// arguments of a call and before an index. `place` itself when there is no such word.
int operandEnd(TextScanner& scanner, int place);

// How many bytes a search for declarations may still read. No honest text comes near it; an artful
// one must not make the editor stand still.
struct ScanBudget {
  int reads = 2'000'000;
};

// The name of the type that stands directly before `position`, empty when none does: for "static
// const Foo *" it is "Foo". Also finds the type of a later name of a list, for "Foo a, ". A keyword
// that can't name a type makes no declaration, and neither does a name that has no type before it
// in such a list.
std::string findDeclType(TextScanner& scanner, int position, ScanBudget& budget);

// A declaration found in the text.
struct TextDecl {
  std::string type;
  int position = 0;  // where the declared name begins
};

// The declaration of `name` that is met first going backward from `from`, at any depth of braces.
// Nothing when there is none down to `lowerBound`.
std::optional<TextDecl> findTextDecl(TextScanner& scanner, std::string_view name, int from,
                                     int lowerBound);

// The declaration whose name ends at `wordEnd`; nothing when the word there is a mere use.
std::optional<TextDecl> declarationAt(TextScanner& scanner, int wordEnd);

}  // namespace zendry
