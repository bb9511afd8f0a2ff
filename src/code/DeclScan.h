#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace zendry {

class TextScanner;

// True if a word before a type doesn't affect its members: "const", "static", "struct".
bool IsPassedOver(std::string_view word);
// True if a word can be the type in a declaration, unlike "return" or "new".
bool CanNameType(std::string_view word);

// An expression such as "p->next[i].x", read as "p.next.x".
struct Chain {
  std::string text;  // empty when there is none
  int start = 0;     // position where it begins
  int wordEnd = 0;   // after the last letter of the word that was asked for
};

// The chain whose last word the byte at `start` belongs to. An index in brackets is left out. A
// chain that doesn't fit the buffer of 512 bytes is empty.
Chain readChain(TextScanner& scanner, int start);

// The last byte of the word that a member operator at `place` works on: the word before the
// arguments of a call and before an index. `place` itself when there is no such word.
int operandEnd(TextScanner& scanner, int place);

// The number of bytes that a search for declarations may still read. Ordinary text never needs as
// many; the limit keeps a malicious text from blocking the editor.
struct ScanBudget {
  int reads = 2'000'000;
};

// The name of the type directly before `position`, empty without one: for "static const Foo *" it
// is "Foo". Also finds the type of a later name in a list, as in "Foo a, ". The result is empty
// after a keyword that can't name a type, and in such a list whose first name has no type before
// it.
std::string findDeclType(TextScanner& scanner, int position, ScanBudget& budget);

// A declaration found in the text.
struct TextDecl {
  std::string type;
  int position = 0;  // beginning of the declared name
};

// The first declaration of `name` when reading backward from `from`, at any depth of braces.
// Nothing when there is none down to `lowerBound`.
std::optional<TextDecl> findTextDecl(TextScanner& scanner, std::string_view name, int from,
                                     int lowerBound);

// The declaration whose name ends at `wordEnd`; nothing when the word there is a mere use.
std::optional<TextDecl> declarationAt(TextScanner& scanner, int wordEnd);

}  // namespace zendry
