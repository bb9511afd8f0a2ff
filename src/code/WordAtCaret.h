#pragma once

#include <string>

namespace zendry {

class CaretText;
class CodeWizard;

// A name in an editor's text.
struct CaretWord {
  std::string text;
  int begin = 0;  // position of its first byte
};

// The name that the caret is in or beside; empty for none. At most 255 bytes on each side of the
// caret are read.
CaretWord WordAtCaret(const CaretText& editor);

// The names before a word and its "::", as in "std::chrono"; empty for none.
std::string ScopeBefore(const CaretText& editor, const CaretWord& word);

// The class whose member the word means at its place, else the class or namespace that is written
// before it, as in "std::max"; empty for none.
std::string ClassOfWord(CodeWizard& wizard, const CaretText& editor, const CaretWord& word);

}  // namespace zendry
