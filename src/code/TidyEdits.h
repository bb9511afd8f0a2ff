#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "code/CppIndent.h"

namespace zendry {

// One change of a text: `length` bytes at `offset` become `text`.
struct TextEdit {
  size_t offset = 0;
  size_t length = 0;
  std::string text;

  friend bool operator==(const TextEdit&, const TextEdit&) = default;
};

// Reads the list of replacements that clang-format prints for a text of `size` bytes. None if the
// list is anything but complete: with other words in it, cut, or with places outside of the text or
// out of order.
std::optional<std::vector<TextEdit>> ReadReplacements(std::string_view list, size_t size);

// The edits without the bytes that stay, so that marks of lines stay where they are. Edits that
// change nothing are left out. The edits must lie in the text, in order.
std::vector<TextEdit> Narrowed(const std::vector<TextEdit>& edits, std::string_view text);

// The edits that indent the lines from `first` up to `last`, which count from 0, by our own rules.
std::vector<TextEdit> IndentEdits(std::string_view text, const IndentHabits& habits, int first,
                                  int last);

// The habits of a text as a style for clang-format: line breaks stay, braces, blanks of directives
// and the stars of pointers go where the text has them.
std::string StyleOf(const IndentHabits& habits, std::string_view text);

// How the text indents directives in conditions, as options of that style: after the `#`, before it
// or not at all.
std::string DirectiveStyle(std::string_view text);

}  // namespace zendry
